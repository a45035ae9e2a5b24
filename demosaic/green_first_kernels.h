// The row kernels of algorithms that complete green first, compiled for each level.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// The input for a row of pixels: the mosaic and complete green.
template <class T>
struct GreenFirstRows {
  HalfRowWindow<T, 2> mosaic;
  HalfRowWindow<T, 1> green;
};

template <class T>
struct GreenFirstPasses {
  // Green at the n red or blue sites of a row, indexed by the column parity of these sites.
  void (*green[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, T* green);
  PixelKernels<T, GreenFirstRows<T>> pixels;
};

// The kernels of a level for such an algorithm: passes for any samples, and faster ones for samples
// of at most twelve bits.
template <class T>
struct GreenFirstKernels {
  GreenFirstPasses<T> anyBits, twelveBits;
};

}  // namespace vistrel::core
