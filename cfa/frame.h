// A mosaic of one sample per pixel, and the means of its samples.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"
#include "common/rows/row_source.h"
#include "common/rows/sweep.h"
#include "vistrel/cfa.h"

namespace vistrel::core {

// Means of samples that are scaled up by `shift` bits, rounded, and scaled down again, expressed on
// the samples themselves: the rounding terms, and a mask of the bits that survive scaling.
struct Rounding {
  int two = 1, four = 2;
  uint32_t mask = 0xFFFF;

  Rounding() = default;
  explicit Rounding(uint32_t shift)
      : two(shift == 0), four(shift == 0 ? 2 : shift == 1), mask(0xFFFFu >> std::min(shift, 16u)) {}
};

template <class T>
struct CfaFrame {
  const T* samples;
  ptrdiff_t step;  // in samples
  CfaSize size;
  Mosaic mosaic;
  Rounding rounding{};

  // A part of this frame as a frame of its own.
  CfaFrame part(int x, int y, CfaSize partSize) const {
    return {samples + y * step + x, step, partSize, mosaic.from(x, y), rounding};
  }
};

// The same, with rows that arrive one after the other.
template <class T>
struct CfaRows {
  RowSource<T>& source;
  CfaSize size;
  Mosaic mosaic;
  Rounding rounding{};

  bool has(int y) const { return 0 <= y && y < size.height; }
};

inline RowInterval rowsOf(CfaRect rect) { return {rect.y, rect.y + rect.height}; }

// The part of a rectangle that is left after its right and lower sides are clipped to the frame.
inline CfaRect clipped(CfaRect roi, CfaSize size) {
  roi.width = std::min(roi.width, size.width - roi.x);
  roi.height = std::min(roi.height, size.height - roi.y);
  return roi;
}

}  // namespace vistrel::core
