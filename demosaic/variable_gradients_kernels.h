// The row kernels of variable gradients, compiled for each level.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// The kernels of a level.
template <class T>
struct VariableGradientsKernels {
  PixelKernels<T, HalfRowWindow<T, 2>> anyBits, twelveBits;
};

}  // namespace vistrel::core
