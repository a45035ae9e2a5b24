#include "output/rows.h"

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "output/rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

const RowKernels& rowKernels() { return *VISTREL_BY_LEVEL(kRowKernels); }

}  // namespace vistrel::core
