// Rings of a few rows: the mosaic, and the measures of its red and blue sites.
#pragma once

#include <algorithm>
#include <climits>

#include "common/rows/half_rows.h"
#include "common/rows/row_depths.h"
#include "demosaic/edge/edge_kernels.h"
#include "demosaic/job.h"

namespace vistrel::core {

// A few rows of the frame as half rows, with its surroundings: two rows above and two below that
// continue the mosaic, and zeros beyond these and on both sides.
// quirk: zero-sides. The mosaic continues above and below, but on the sides formulas read zeros.
template <class T>
class EdgeMosaicRing {
 public:
  EdgeMosaicRing(const DemosaicJob<T>& job, Arena& arena)
      : source_(job.source), columns_(job.columns), height_(job.height),
        ring_(kRows + 1, 2, static_cast<size_t>(columns_), arena) {}

  // A row that is repeated below the frame is only loaded if the sweep began after it. Rows above
  // the frame repeat rows that are loaded later.
  void load(int y, const EdgeKernels<T>& kernels) {
    const int row = rowAt(y);
    if (row == kNone || row > y) return;
    Loaded& loaded = loaded_[placeOf(row)];
    if (loaded.row != row) loaded = {row, split(row, kernels)};
    depths_.loaded(y, loaded.bits);
  }

  const RowDepths& depths() const { return depths_; }
  Prefetcher nextSource() const { return source_.next(); }

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    return windowOf<reach>(
        y, [this](int row, unsigned parity) -> const T* { return half(row, parity); });
  }

  // On each side of a row lie two columns of zeros, and beyond them the neighbouring rows.
  T at(int y, ptrdiff_t x) const {
    const ptrdiff_t stride = columns_ + 4, column = x + 2;
    const int row = y + static_cast<int>(column / stride);
    const ptrdiff_t i = column % stride - 2;
    return 0 <= i && i < columns_ ? half(row, static_cast<unsigned>(i) & 1)[i / 2] : T{0};
  }

 private:
  static constexpr int kRows = 8;
  static constexpr int kNone = INT_MIN;

  struct Loaded {
    int row = kNone;
    T bits = 0;  // of the row's samples, ORed together
  };

  static unsigned placeOf(int y) { return static_cast<unsigned>(y) % kRows; }

  // The frame's row at position y; kNone where there are zeros.
  int rowAt(int y) const {
    if (-2 <= y && y < 0)
      y += 2;
    else if (height_ <= y && y < height_ + 2)
      y -= 2;
    return 0 <= y && y < height_ ? y : kNone;
  }

  // Returns the samples of the row ORed together.
  T split(int y, const EdgeKernels<T>& kernels) {
    T *const even = ring_.at(placeOf(y), 0), *const odd = ring_.at(placeOf(y), 1);
    const auto columns = static_cast<size_t>(columns_);
    for (T* const half : {even, odd}) {
      std::fill_n(half - 2, 2, T{0});
      std::fill_n(half + columns / 2, 2, T{0});
    }
    return kernels.split(source_.row(y), columns, even, odd);
  }

  // The ring's last row stays zero.
  const T* half(int y, unsigned parity) const {
    const int row = rowAt(y);
    return ring_.at(row == kNone ? unsigned{kRows} : placeOf(row), parity);
  }

  RowSource<T>& source_;
  ptrdiff_t columns_;
  int height_;
  HalfRowRing<T> ring_;
  Loaded loaded_[kRows];
  RowDepths depths_;
};

// A few rows of measures, each in narrow or in wide lanes.
template <class T>
class MeasureRing {
 public:
  MeasureRing(size_t columns, Arena& arena)
      : sites_(static_cast<ptrdiff_t>(columns / 2)),
        narrow_(kRows, kMeasures, sizeof(T) == 1 ? 0 : columns, arena),
        wide_(kRows, kMeasures, columns, arena) {}

  // The memory for the measures of row y.
  template <class Lane>
  MeasureRow<Lane> made(int y) {
    isNarrow_[placeOf(y)] = sizeof(Lane) < sizeof(Widened<T>);
    return row<Lane>(y);
  }

  // Rows y - 1 .. y + 1. Widens narrow rows if wide ones are requested.
  template <class Lane>
  MeasureWindow<Lane> window(int y) {
    if constexpr (std::is_same_v<Lane, Widened<T>>)
      for (int i = y - 1; i <= y + 1; ++i)
        if (isNarrow_[placeOf(i)]) widen(i);
    return {row<Lane>(y - 1), row<Lane>(y), row<Lane>(y + 1)};
  }

 private:
  static constexpr unsigned kRows = 3, kMeasures = 6;

  static unsigned placeOf(int y) { return (static_cast<unsigned>(y) + kRows) % kRows; }

  template <class Lane>
  Lane* measure(int y, unsigned which) const {
    if constexpr (std::is_same_v<Lane, Widened<T>>)
      return wide_.at(placeOf(y), which);
    else
      return narrow_.at(placeOf(y), which);
  }

  template <class Lane>
  MeasureRow<Lane> row(int y) const {
    return {measure<Lane>(y, 0), measure<Lane>(y, 1), measure<Lane>(y, 2),
            measure<Lane>(y, 3), measure<Lane>(y, 4), measure<Lane>(y, 5)};
  }

  // Widens the sites from one before the region to one beyond it.
  void widen(int y) {
    for (unsigned which = 0; which < kMeasures; ++which) {
      const int16_t* const narrow = measure<int16_t>(y, which);
      std::copy(narrow - 1, narrow + sites_ + 2, measure<Widened<T>>(y, which) - 1);
    }
    isNarrow_[placeOf(y)] = false;
  }

  ptrdiff_t sites_;
  HalfRowRing<int16_t> narrow_;
  HalfRowRing<Widened<T>> wide_;
  bool isNarrow_[kRows] = {};
};

}  // namespace vistrel::core
