#include "samples/prepare.h"

#include "common/simd/simd.h"
#include "cpu/level.h"

#define VISTREL_BODY "samples/prepare-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

template <class T>
void prepareRow(const void* from, size_t n, T* to, const Preparation& how) {
  VISTREL_BY_LEVEL(prepareRow<T>)(from, n, to, how);
}

template void prepareRow(const void*, size_t, uint8_t*, const Preparation&);
template void prepareRow(const void*, size_t, uint16_t*, const Preparation&);

}  // namespace vistrel::core
