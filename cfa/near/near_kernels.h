// The row kernels of nearest neighbours, compiled for each level.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// The kernels of a level. `pixels` is indexed by the rounding term of means of four.
template <class T>
struct NearKernels {
  void (*split)(const T* source, size_t columns, T* even, T* odd);
  void (*keepBits)(T* half, size_t n, T mask);
  const PixelKernels<T, HalfRowWindow<T, 2>>* pixels[3];
};

}  // namespace vistrel::core
