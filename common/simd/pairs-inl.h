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

#if VISTREL_PERMUTES

template <class T>
struct Pairs {
  Vec<T> lower, upper;
};

#endif

#if VISTREL_GROUPS

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

#elif VISTREL_NEON

// Pairs of bytes stay apart, since multiplications widen half a vector.
template <bool upper>
struct BytePairs {
  uint8x16_t first, second;
};
template <>
struct Pairs<uint8_t> {
  BytePairs<false> lower;
  BytePairs<true> upper;
};
VISTREL_INLINE Pairs<uint8_t> pairsOf(Vec<uint8_t> a, Vec<uint8_t> b) {
  const auto x = as<uint8x16_t>(a), y = as<uint8x16_t>(b);
  return {{x, y}, {x, y}};
}
VISTREL_INLINE Pairs<uint16_t> pairsOf(Vec<uint16_t> a, Vec<uint16_t> b) {
  const auto x = as<uint16x8_t>(a), y = as<uint16x8_t>(b);
  return {as<Vec<uint16_t>>(vzip1q_u16(x, y)), as<Vec<uint16_t>>(vzip2q_u16(x, y))};
}
VISTREL_INLINE Vec<uint8_t> narrowed(Vec<uint16_t> lower, Vec<uint16_t> upper) {
  return as<Vec<uint8_t>>(pack16(as<Register>(lower), as<Register>(upper)));
}
VISTREL_INLINE Vec<uint16_t> narrowed(Vec<int32_t> lower, Vec<int32_t> upper) {
  return as<Vec<uint16_t>>(pack32(as<Register>(lower), as<Register>(upper)));
}
// sum + w * v
template <int w, bool upper>
VISTREL_INLINE uint16x8_t withProduct(uint16x8_t sum, uint8x16_t v) {
  constexpr uint8_t size = w < 0 ? -w : w;
  if constexpr (w < 0)
    return upper ? vmlsl_high_u8(sum, v, vdupq_n_u8(size))
                 : vmlsl_u8(sum, vget_low_u8(v), vdup_n_u8(size));
  else if constexpr (w > 0)
    return upper ? vmlal_high_u8(sum, v, vdupq_n_u8(size))
                 : vmlal_u8(sum, vget_low_u8(v), vdup_n_u8(size));
  else
    return sum;
}
template <int a, int b, bool upper>
VISTREL_INLINE Vec<uint16_t> weighted(const BytePairs<upper>& v) {
  const uint16x8_t first = withProduct<a, upper>(vdupq_n_u16(0), v.first);
  return as<Vec<uint16_t>>(withProduct<b, upper>(first, v.second));
}
template <int a, int b>
VISTREL_INLINE Vec<uint16_t> weighted(Vec<uint8_t> v) {
  const auto pairs = as<Vec<uint16_t>>(v);
  return (pairs & 255) * static_cast<uint16_t>(a) + (pairs >> 8) * static_cast<uint16_t>(b);
}
template <int a, int b>
VISTREL_INLINE Vec<int32_t> weighted(Vec<int16_t> v) {
  return as<Vec<int32_t>>(pairProducts16(as<Register>(v), set1_32(b << 16 | a)));
}

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
