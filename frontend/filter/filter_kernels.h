// The row kernels of the filters, compiled for each level.
#pragma once

#include <cstddef>

#include "vistrel/vistrel.h"

namespace vistrel::core {

// A kernel computes n results of a row, n >= 1; taps point to the samples for the first result.
template <class T>
struct FilterKernels {
  using Fixed = void (*)(const T* const* taps, size_t n, T* results);
  using Weighted = void (*)(const _FLT_3X3& filter, const T* const* taps, size_t n, T* results);
  Fixed box, fiveTaps;
  Weighted fastWeights, anyWeights;
};

}  // namespace vistrel::core
