// The row kernels of the filters, as each level compiles them.
#pragma once

#include <cstddef>

#include "vistrel/vistrel.h"

namespace vistrel::core {

// What each level has of its own: n results of a row, from 1 up; taps point to the samples of the
// first one.
template <class T>
struct FilterKernels {
  using Fixed = void (*)(const T* const* taps, size_t n, T* results);
  using Weighted = void (*)(const _FLT_3X3& filter, const T* const* taps, size_t n, T* results);
  Fixed box, fiveTaps;
  Weighted smallWeights, anyWeights;
};

}  // namespace vistrel::core
