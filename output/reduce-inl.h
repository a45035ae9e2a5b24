// Reduces single samples, without binning: all channels are treated alike.
#if defined(VISTREL_REDUCE_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_REDUCE_INL_H
#undef VISTREL_REDUCE_INL_H
#else
#define VISTREL_REDUCE_INL_H
#endif

#include "common/simd/registers-inl.h"
#include "output/arithmetic-inl.h"
#include "output/rows.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T, class D>
VISTREL_INLINE void reduceRest(const T* s, D* d, size_t begin, size_t end, Reduction by) {
  for (size_t i = begin; i < end; ++i) d[i] = atMost<D>(uint32_t{s[i]} >> by.shift, by.ceiling);
}

inline void reduceSamples(const uint8_t* __restrict s, uint8_t* __restrict d, size_t n,
                          Reduction by) {
  if (by.shift == 0 && by.ceiling == 255)
    std::memcpy(d, s, n);
  else
    reduceRest(s, d, 0, n, by);
}

#if VISTREL_PERMUTES
VISTREL_INLINE Register reduced(const uint16_t* s, ShiftCount shift, Register ceiling) {
  return min16(shiftRight16(loadRegister(s), shift), ceiling);
}
#endif

inline void reduceSamples(const uint16_t* __restrict s, uint8_t* __restrict d, size_t n,
                          Reduction by) {
  size_t i = 0;
#if VISTREL_PERMUTES
  constexpr size_t half = kRegisterBytes / 2;
  const ShiftCount shift = shiftCount(by.shift);
  const Register ceiling = set1_16(static_cast<int>(by.ceiling));
  for (; i + 2 * half <= n; i += 2 * half)
    storeRegister(d + i, inOrder(pack16(reduced(s + i, shift, ceiling),
                                        reduced(s + i + half, shift, ceiling))));
#endif
  reduceRest(s, d, i, n, by);
}

inline void reduceSamples(const uint16_t* __restrict s, uint16_t* __restrict d, size_t n,
                          Reduction by) {
  size_t i = 0;
#if VISTREL_PERMUTES
  constexpr size_t half = kRegisterBytes / 2;
  const ShiftCount shift = shiftCount(by.shift);
  const Register ceiling = set1_16(static_cast<int>(by.ceiling));
  for (; i + half <= n; i += half) storeRegister(d + i, reduced(s + i, shift, ceiling));
#endif
  reduceRest(s, d, i, n, by);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
