// A frame whose rows are already pixels: mono, or finished colours.
#pragma once

#include "demosaic/job.h"
#include "output/image_output.h"

namespace vistrel::core {

template <class T>
class ReadyRows final : public RowProcess<T> {
 public:
  // rows: those of the source to convert, whole bins. columns: pixels per row. channels: samples
  // per pixel.
  ReadyRows(RowSource<T>& source, size_t columns, size_t channels, RowInterval rows,
            const OutputShape& shape, PixelRows& pixels, Arena& arena)
      : source_(source), channels_(channels), samples_(columns * channels), rows_(rows),
        next_(rows.first), shape_(shape), pixels_(pixels), chunks_(shape, pixels, arena),
        stage_(shape.binning > 1 ? arena.take<T>(shape.binning * samples_) : nullptr) {}

  // The distance between two rows of a bin, in samples.
  static size_t pitchOf(size_t columns, size_t channels) { return columns * channels; }

  void advance(int end) override {
    for (; next_ < std::min(end, rows_.end); ++next_) load(next_, source_.row(next_));
  }
  int first() const override { return rows_.first; }
  int last() const override { return rows_.end; }

 private:
  void load(int y, const T* samples) {
    const int F = static_cast<int>(shape_.binning), place = y % F;
    if (F == 1) return finish(y, samples);
    std::copy_n(samples, samples_, stage_ + static_cast<size_t>(place) * samples_);
    if (place == F - 1) finish(y / F, stage_);
  }

  void finish(int row, const T* bins) {
    pixels_.begin(static_cast<size_t>(row));
    chunks_.append(bins, shape_.width, shape_.binning * channels_ * sizeof(T));
    pixels_.end();
  }

  RowSource<T>& source_;
  size_t channels_, samples_;  // of a pixel, of a row
  RowInterval rows_;
  int next_;
  const OutputShape shape_;
  PixelRows& pixels_;
  ChunkedOutput chunks_;
  T* stage_;
};

}  // namespace vistrel::core
