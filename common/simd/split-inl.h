// Splits a row into two half rows: the even and the odd columns.
#if defined(VISTREL_SPLIT_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_SPLIT_INL_H
#undef VISTREL_SPLIT_INL_H
#else
#define VISTREL_SPLIT_INL_H
#endif

#include "common/simd/simd.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Lane: the type that samples get; they must fit it.
template <class T, class Lane = T>
void splitRow(const T* __restrict source, size_t columns, Lane* __restrict even,
              Lane* __restrict odd) {
  const size_t pairs = columns / 2;
  for (size_t k = 0; k < pairs; ++k) {
    even[k] = static_cast<Lane>(source[2 * k]);
    odd[k] = static_cast<Lane>(source[2 * k + 1]);
  }
  if (columns & 1) even[pairs] = static_cast<Lane>(source[2 * pairs]);
}

// Also returns all samples ORed together; 0 for bytes, since nobody needs it.
template <class T>
T splitRowAndBits(const T* __restrict source, size_t columns, T* __restrict even,
                  T* __restrict odd) {
  if constexpr (sizeof(T) == 1) {
    splitRow(source, columns, even, odd);
    return 0;
  }
  const size_t pairs = columns / 2;
  T bits = 0;
  for (size_t k = 0; k < pairs; ++k) {
    const T first = source[2 * k], second = source[2 * k + 1];
    even[k] = first;
    odd[k] = second;
    bits |= first | second;
  }
  if (columns & 1) bits |= even[pairs] = source[2 * pairs];
  return bits;
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
