// The row kernels that load and smooth a mosaic, compiled for each level.
#pragma once

#include <cstddef>

namespace vistrel::core {

// The kernels of a level.
template <class T>
struct MosaicKernels {
  void (*split)(const T* source, size_t columns, T* even, T* odd);
  T (*splitAndBits)(const T* source, size_t columns, T* even, T* odd);
  void (*smooth)(const T* green, const T* above, const T* below, size_t n, T* smoothed);
};

}  // namespace vistrel::core
