#include "samples/scale.h"

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "samples/scale-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

void scaleRow(const void* from, size_t n, uint16_t* to, const Scaling& how) {
  VISTREL_BY_LEVEL(scaleRow)(from, n, to, how);
}

}  // namespace vistrel::core
