// A few rows of the mosaic and of what is measured at its red and blue sites.
#pragma once

#include <algorithm>

#include "common/depth.h"
#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"
#include "common/rows/row_depths.h"
#include "common/rows/row_source.h"
#include "demosaic/conversion.h"

namespace vistrel::core {

// Measures of the red or blue sites of a row, see edge.inl.
template <class Lane>
struct MeasureRow {
  Lane *vertical, *verticals, *horizontal, *horizontals, *inRow, *inColumn;
};

template <class Lane>
struct MeasureWindow {
  MeasureRow<Lane> row[3];
};

// Behind a row of pixels.
template <class T, class Lane>
struct EdgeWindow {
  HalfRowWindow<T, 1> mosaic;
  MeasureWindow<Lane> measures;
  Lane thresholds[4];
  int limit;
};

// What each level compiles.
template <class T, class Lane>
struct EdgeLaneKernels {
  // By the column parity of the red or blue sites, of which the row has n.
  void (*measure[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, const MeasureRow<Lane>& to);
  PixelKernels<T, EdgeWindow<T, Lane>> pixels;
};

// Sums of samples of twelve bits at most fit lanes of 16 bits; others need twice a sample's length.
template <class T>
struct EdgeKernels {
  T (*split)(const T* source, size_t columns, T* even, T* odd);
  EdgeLaneKernels<T, int16_t> narrow;
  EdgeLaneKernels<T, Widened<T>> wide;

  template <class Lane>
  const EdgeLaneKernels<T, Lane>& of() const {
    if constexpr (std::is_same_v<Lane, int16_t>)
      return narrow;
    else
      return wide;
  }
};

// The frame with its surroundings: two rows above and below it that continue the mosaic, and zeros
// beyond those and on either side.
template <class T>
class EdgeFrame {
 public:
  explicit EdgeFrame(const Conversion<T>& c)
      : columns_(c.region.Wf), height_(static_cast<int>(c.region.Hf)),
        mosaic_(Mosaic::ofPhase(c.nBayer)),
        source_(c.pSrc + c.region.x0, static_cast<ptrdiff_t>(c.sourceStride), height_) {}

  ptrdiff_t columns() const { return columns_; }
  int height() const { return height_; }

  // quirk: edge-phase. The region's columns count from its own first one, wherever that lies.
  const Mosaic& mosaic() const { return mosaic_; }

  // The row of the source that stands at y; null where there are zeros.
  const T* row(int y) const {
    if (-2 <= y && y < 0)
      y += 2;
    else if (height_ <= y && y < height_ + 2)
      y -= 2;
    return source_.has(y) ? source_.row(y) : nullptr;
  }

  // Two columns of zeros on either side; beyond them the neighbouring rows.
  T at(int y, ptrdiff_t x) const {
    const ptrdiff_t stride = columns_ + 4, column = x + 2;
    const ptrdiff_t rowsDown = column / stride, i = column % stride - 2;
    const T* const samples = row(y + static_cast<int>(rowsDown));
    return samples && 0 <= i && i < columns_ ? samples[i] : T{0};
  }

 private:
  ptrdiff_t columns_;
  int height_;
  Mosaic mosaic_;
  RowSource<T> source_;
};

// Some rows of it as half rows.
// quirk: zero-sides. Above and below, the mosaic goes on; at the sides formulas read zeros.
template <class T>
class EdgeMosaicRing {
 public:
  explicit EdgeMosaicRing(const EdgeFrame<T>& frame)
      : frame_(frame), ring_(kRows, 2, size_t(frame.columns())) {}

  explicit operator bool() const { return bool(ring_); }

  void load(int y, const EdgeKernels<T>& kernels) {
    T *const even = half(y, 0), *const odd = half(y, 1);
    const size_t columns = size_t(frame_.columns());
    for (T* const half : {even, odd}) {
      std::fill_n(half - 2, 2, T{0});
      std::fill_n(half + columns / 2, 2, T{0});
    }
    const T* const row = frame_.row(y);
    if (!row) {
      std::fill_n(even, columns / 2, T{0});
      std::fill_n(odd, columns / 2, T{0});
      return;
    }
    depths_.loaded(y, kernels.split(row, columns, even, odd));
    if (const T* const next = frame_.row(y + 1)) prefetchRow(next, columns * sizeof(T));
  }

  const RowDepths& depths() const { return depths_; }

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    return windowOf<reach>(y, [this](int row, unsigned parity) { return half(row, parity); });
  }

 private:
  static constexpr unsigned kRows = 5;

  T* half(int y, unsigned parity) const { return ring_.half(unsigned(y) + kRows, parity); }

  const EdgeFrame<T>& frame_;
  HalfRowRing<T> ring_;
  RowDepths depths_;
};

// Some rows of measures, each in narrow or in wide lanes.
template <class T>
class MeasureRing {
 public:
  explicit MeasureRing(size_t columns)
      : sites_(static_cast<ptrdiff_t>(columns / 2)),
        narrow_(kRows, kMeasures, sizeof(T) == 1 ? 0 : columns), wide_(kRows, kMeasures, columns) {}

  explicit operator bool() const { return narrow_ && wide_; }

  // Row y, to be measured.
  template <class Lane>
  MeasureRow<Lane> made(int y) {
    isNarrow_[slot(y)] = sizeof(Lane) < sizeof(Widened<T>);
    return row<Lane>(y);
  }

  // Rows y - 1 .. y + 1. Narrow rows become wide where wide ones are wanted.
  template <class Lane>
  MeasureWindow<Lane> window(int y) {
    if constexpr (std::is_same_v<Lane, Widened<T>>)
      for (int i = y - 1; i <= y + 1; ++i)
        if (isNarrow_[slot(i)]) widen(i);
    return {row<Lane>(y - 1), row<Lane>(y), row<Lane>(y + 1)};
  }

 private:
  static constexpr unsigned kRows = 3, kMeasures = 6;

  static unsigned slot(int y) { return (unsigned(y) + kRows) % kRows; }

  template <class Lane>
  Lane* measure(int y, unsigned which) const {
    if constexpr (std::is_same_v<Lane, Widened<T>>)
      return wide_.half(slot(y), which);
    else
      return narrow_.half(slot(y), which);
  }

  template <class Lane>
  MeasureRow<Lane> row(int y) const {
    return {measure<Lane>(y, 0), measure<Lane>(y, 1), measure<Lane>(y, 2),
            measure<Lane>(y, 3), measure<Lane>(y, 4), measure<Lane>(y, 5)};
  }

  // From one site before the region to one beyond it.
  void widen(int y) {
    for (unsigned which = 0; which < kMeasures; ++which) {
      const int16_t* const narrow = measure<int16_t>(y, which);
      std::copy(narrow - 1, narrow + sites_ + 2, measure<Widened<T>>(y, which) - 1);
    }
    isNarrow_[slot(y)] = false;
  }

  ptrdiff_t sites_;
  HalfRowRing<int16_t> narrow_;
  HalfRowRing<Widened<T>> wide_;
  bool isNarrow_[kRows] = {};
};

}  // namespace vistrel::core
