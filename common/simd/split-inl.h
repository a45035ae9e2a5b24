// A row's even and odd columns to two half rows. Returns the bits that any 16-bit sample has.
#if defined(VISTREL_SPLIT_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_SPLIT_INL_H
#undef VISTREL_SPLIT_INL_H
#else
#define VISTREL_SPLIT_INL_H
#endif

#include "common/simd/simd.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
T splitPairs(const T* __restrict source, size_t pairs, T* __restrict even, T* __restrict odd) {
  T bits = 0;
  for (size_t k = 0; k < pairs; ++k) {
    even[k] = source[2 * k];
    odd[k] = source[2 * k + 1];
    if constexpr (sizeof(T) == 2) bits |= even[k] | odd[k];
  }
  return bits;
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
