// Splits a row into two half rows: the even and the odd columns.
#if defined(VISTREL_SPLIT_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_SPLIT_INL_H
#undef VISTREL_SPLIT_INL_H
#else
#define VISTREL_SPLIT_INL_H
#endif

#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_WASM

// Splits as many pairs as fill vectors, and returns their number. In WebAssembly, clang 14 makes no
// vectors of the loops below.
template <class T, class Lane>
size_t splitVectors(const T* source, size_t pairs, Lane* even, Lane* odd) {
  static_assert(sizeof(Lane) <= 2 * sizeof(T));
  using Parts = EvenOdd<T>;
  constexpr size_t n = kLanes<Lane>;
  size_t k = 0;
  for (; k + n <= pairs; k += n) {
    const Vec<T> v = load(source + 2 * k);
    if constexpr (sizeof(Lane) > sizeof(T)) {
      store(even + k, as<Vec<Lane>>(Parts::part(v, 0)));
      store(odd + k, as<Vec<Lane>>(Parts::part(v, 1)));
    } else {
      const Vec<T> w = load(source + 2 * k + n);
      store(even + k, as<Vec<Lane>>(LowHigh<T>::join({Parts::part(v, 0), Parts::part(w, 0)})));
      store(odd + k, as<Vec<Lane>>(LowHigh<T>::join({Parts::part(v, 1), Parts::part(w, 1)})));
    }
  }
  return k;
}

#else

template <class T, class Lane>
size_t splitVectors(const T*, size_t, Lane*, Lane*) {
  return 0;
}

#endif

// Lane: the type that samples get; they must fit it. It has the sample's length or twice that.
template <class T, class Lane = T>
void splitRow(const T* __restrict source, size_t columns, Lane* __restrict even,
              Lane* __restrict odd) {
  const size_t pairs = columns / 2;
  for (size_t k = splitVectors(source, pairs, even, odd); k < pairs; ++k) {
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
  const size_t split = splitVectors(source, pairs, even, odd);
  for (size_t k = 0; k < 2 * split; ++k) bits |= source[k];
  for (size_t k = split; k < pairs; ++k) {
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
