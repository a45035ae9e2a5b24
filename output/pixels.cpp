#include "output/pixels.h"

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "output/pixels-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

const PixelFormatKernels& pixelFormatKernels() { return *VISTREL_BY_LEVEL(kPixelFormatKernels); }

}  // namespace vistrel::core
