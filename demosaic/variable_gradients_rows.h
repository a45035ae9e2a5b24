// The row kernels of the variable gradients, as each level compiles them.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// What each level compiles.
template <class T>
struct VariableGradientsKernels {
  PixelKernels<T, HalfRowWindow<T, 2>> twelveBits, anyBits;
};

}  // namespace vistrel::core
