// A mono frame: its rows are pixels already.
#pragma once

#include "demosaic/job.h"
#include "output/image_output.h"

namespace vistrel::core {

template <class T>
class MonoRows final : public Demosaic<T> {
 public:
  // rows: of the source, whole bins. columns: of a row.
  MonoRows(RowSource<T>& source, size_t columns, RowInterval rows, const OutputShape& shape,
           PixelRows& pixels, Arena& arena)
      : source_(source), columns_(columns), rows_(rows), next_(rows.first), shape_(shape),
        pixels_(pixels), chunks_(shape, pixels, arena),
        stage_(shape.binning > 1 ? arena.take<T>(shape.binning * columns) : nullptr) {}

  // Distance of two rows of a bin, in samples.
  static size_t pitchOf(size_t columns) { return columns; }

  void advance(int end) override {
    for (; next_ < std::min(end, rows_.end); ++next_) load(next_, source_.row(next_));
  }
  int first() const override { return rows_.first; }
  int last() const override { return rows_.end; }

 private:
  void load(int y, const T* samples) {
    const int F = static_cast<int>(shape_.binning), place = y % F;
    if (F == 1) return finish(y, samples);
    std::copy_n(samples, columns_, stage_ + static_cast<size_t>(place) * columns_);
    if (place == F - 1) finish(y / F, stage_);
  }

  void finish(int row, const T* bins) {
    pixels_.begin(static_cast<size_t>(row));
    chunks_.append(bins, shape_.width, shape_.binning * sizeof(T));
    pixels_.end();
  }

  RowSource<T>& source_;
  size_t columns_;
  RowInterval rows_;
  int next_;
  const OutputShape shape_;
  PixelRows& pixels_;
  ChunkedOutput chunks_;
  T* stage_;
};

}  // namespace vistrel::core
