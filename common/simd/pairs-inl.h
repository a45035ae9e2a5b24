// Sums of products in lanes of twice the length. The samples of two vectors become pairs: `lower`
// has those of the lower halves of all 16-byte groups, `upper` those of the upper halves. Packing
// two such results restores the order of the samples.
#if defined(VISTREL_PAIRS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PAIRS_INL_H
#undef VISTREL_PAIRS_INL_H
#else
#define VISTREL_PAIRS_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/registers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_SSSE3

#if VISTREL_AVX512
typedef __m512i LongRegister;
#define VISTREL_LONG_OP(name) _mm512_##name
#else
typedef Register LongRegister;
#define VISTREL_LONG_OP(name) VISTREL_OP(name)
#endif

// The operation `name` of two vectors.
#define VISTREL_OF_TWO(Result, name, a, b) \
  as<Result>(VISTREL_LONG_OP(name)(as<LongRegister>(a), as<LongRegister>(b)))

template <class T>
struct Pairs {
  Vec<T> lower, upper;
};
VISTREL_INLINE Pairs<uint8_t> pairsOf(Vec<uint8_t> a, Vec<uint8_t> b) {
  return {VISTREL_OF_TWO(Vec<uint8_t>, unpacklo_epi8, a, b),
          VISTREL_OF_TWO(Vec<uint8_t>, unpackhi_epi8, a, b)};
}
VISTREL_INLINE Pairs<uint16_t> pairsOf(Vec<uint16_t> a, Vec<uint16_t> b) {
  return {VISTREL_OF_TWO(Vec<uint16_t>, unpacklo_epi16, a, b),
          VISTREL_OF_TWO(Vec<uint16_t>, unpackhi_epi16, a, b)};
}

// Narrows the lanes: 16-bit values below 256, or 32-bit values that fit 16 signed bits.
VISTREL_INLINE Vec<uint8_t> narrowed(Vec<uint16_t> lower, Vec<uint16_t> upper) {
  return VISTREL_OF_TWO(Vec<uint8_t>, packus_epi16, lower, upper);
}
VISTREL_INLINE Vec<uint16_t> narrowed(Vec<int32_t> lower, Vec<int32_t> upper) {
  return VISTREL_OF_TWO(Vec<uint16_t>, packs_epi32, lower, upper);
}

// a times the first sample of each pair plus b times the second. Sums of bytes must fit 16 signed
// bits.
template <int a, int b>
VISTREL_INLINE Vec<uint16_t> weighted(Vec<uint8_t> v) {
  static_assert(a >= -128 && a < 128 && b >= -128 && b < 128);
  const auto weights = Vec<uint16_t>{} + static_cast<uint16_t>((b & 255) << 8 | (a & 255));
  return VISTREL_OF_TWO(Vec<uint16_t>, maddubs_epi16, v, weights);
}
template <int a, int b>
VISTREL_INLINE Vec<int32_t> weighted(Vec<int16_t> v) {
  static_assert(a >= 0 && a < 32768 && b >= 0 && b < 32768);
  const auto weights = Vec<int32_t>{} + (b << 16 | a);
  return VISTREL_OF_TWO(Vec<int32_t>, madd_epi16, v, weights);
}

#undef VISTREL_OF_TWO
#undef VISTREL_LONG_OP

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
