// A few rows of the mosaic and of what is measured at its red and blue sites.
#pragma once

#include <algorithm>

#include "common/rows/half_rows.h"
#include "common/rows/pixel_row.h"
#include "demosaic/conversion.h"

namespace vistrel::core {

// The type of samples and that of the lanes that are to hold sums of them.
template <class T, class L>
struct EdgeTypes {
  using Sample = T;
  using Lane = L;
};

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
struct EdgeKernels {
  T (*split)(const T* source, size_t pairs, T* even, T* odd);
  bool (*holdsBits)(const T* row, size_t n, unsigned bits);
  // By the column parity of the red or blue sites, of which the row has n.
  void (*measure[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, const MeasureRow<Lane>& to);
  PixelRows<T, EdgeWindow<T, Lane>> pixels;
};

// The frame with its surroundings: two rows above and below it that continue the mosaic, and zeros
// beyond those and on either side.
template <class T>
class EdgeFrame {
 public:
  explicit EdgeFrame(const Conversion<T>& c)
      : columns_(c.region.Wf), height_(static_cast<int>(c.region.Hf)), nBayer_(c.nBayer),
        source_(c.pSrc + c.region.x0), stride_(c.sourceStride) {}

  ptrdiff_t columns() const { return columns_; }
  int height() const { return height_; }

  bool isBlueRow(int y) const { return rowParity(nBayer_, unsigned(y)) == 1; }

  // The column parity of the green sites of row y.
  // quirk: edge-phase. The region's columns count from its own first one, wherever that lies.
  unsigned greenParity(int y) const {
    return rowParity(nBayer_, unsigned(y)) ^ columnParity(nBayer_, 0);
  }

  // The row of the source that stands at y; null where there are zeros.
  const T* row(int y) const {
    if (-2 <= y && y < 0)
      y += 2;
    else if (height_ <= y && y < height_ + 2)
      y -= 2;
    return 0 <= y && y < height_ ? source_ + size_t(y) * stride_ : nullptr;
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
  uint32_t nBayer_;
  const T* source_;
  size_t stride_;
};

// Some rows of it as half rows.
// quirk: zero-sides. Above and below, the mosaic goes on; at the sides formulas read zeros.
template <class T>
class EdgeMosaic {
 public:
  explicit EdgeMosaic(const EdgeFrame<T>& frame)
      : frame_(frame), ring_(kRows, 2, size_t(frame.columns())) {}

  explicit operator bool() const { return bool(ring_); }

  void load(int y, T (*split)(const T*, size_t, T*, T*)) {
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
    split(row, columns / 2, even, odd);
    if (columns & 1) even[columns / 2] = row[columns - 1];
    if (const T* const next = frame_.row(y + 1)) prefetchRow(next, columns * sizeof(T));
  }

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    HalfRowWindow<T, reach> w;
    for (int dy = -reach; dy <= reach; ++dy)
      for (unsigned parity = 0; parity < 2; ++parity)
        w.half[dy + reach][parity] = half(y + dy, parity);
    return w;
  }

 private:
  static constexpr unsigned kRows = 5;

  T* half(int y, unsigned parity) const { return ring_.half(unsigned(y) + kRows, parity); }

  const EdgeFrame<T>& frame_;
  HalfRowRing<T> ring_;
};

// Some rows of measures.
template <class Lane>
class MeasureRows {
 public:
  explicit MeasureRows(size_t columns) : ring_(kRows, kMeasures, columns) {}

  explicit operator bool() const { return bool(ring_); }

  MeasureRow<Lane> row(int y) const {
    const auto measure = [&](unsigned which) { return ring_.half(unsigned(y) + kRows, which); };
    return {measure(0), measure(1), measure(2), measure(3), measure(4), measure(5)};
  }
  MeasureWindow<Lane> window(int y) const { return {row(y - 1), row(y), row(y + 1)}; }

 private:
  static constexpr unsigned kRows = 3, kMeasures = 6;

  HalfRowRing<Lane> ring_;
};

}  // namespace vistrel::core
