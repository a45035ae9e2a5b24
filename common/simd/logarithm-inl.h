// Coarse logarithms, and parts that depend on the difference of two. A logarithm counts quarters of
// an octave on straight lines between powers of two: these are the exponent and the two highest
// bits of the mantissa of a real number. The exponent keeps its bias.
#if defined(VISTREL_LOGARITHM_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_LOGARITHM_INL_H
#undef VISTREL_LOGARITHM_INL_H
#else
#define VISTREL_LOGARITHM_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/products-inl.h"
#include "common/simd/registers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// The bits of integers below 2^24 as real numbers.
VISTREL_INLINE Vec<uint32_t> bitsOfReals(Vec<uint32_t> v) {
  return as<Vec<uint32_t>>(__builtin_convertvector(as<Vec<int32_t>>(v), Vec<float>));
}

// In lanes of 32 bits the logarithm's unit is 1, in lanes of 16 bits 32.
VISTREL_INLINE Vec<int32_t> logarithm(Vec<uint32_t> n) {
  return as<Vec<int32_t>>(bitsOfReals(n) >> 21);
}
VISTREL_INLINE Vec<int16_t> logarithm(Vec<uint16_t> n) {
  const auto pairs = as<Vec<uint32_t>>(n);
  const Vec<uint32_t> first = bitsOfReals(pairs & 0xFFFF) >> 16, second = bitsOfReals(pairs >> 16);
#if (VISTREL_SSE41 && !VISTREL_AVX512) || VISTREL_WASM
  const auto upper = as<Vec<int16_t>>(blend16<0xAA>(as<Register>(first), as<Register>(second)));
#else
  const auto upper = as<Vec<int16_t>>(first | (second & 0xFFFF0000));
#endif
  return upper & static_cast<int16_t>(0xFFE0);
}

// Bytes of a table of sixteen, whose first entry is 0.
VISTREL_INLINE Vec<uint8_t> lookUp(const uint8_t (&table)[16], Vec<uint8_t> indices) {
#if VISTREL_AVX512
  const __m128i entries = _mm_loadu_si128(reinterpret_cast<const __m128i*>(table));
  const __m512i all = _mm512_maskz_broadcast_i32x4(0xFFFF, entries);
  return as<Vec<uint8_t>>(_mm512_shuffle_epi8(all, as<__m512i>(indices)));
#elif VISTREL_GROUPS
  const Register all = allGroups(table);
  return as<Vec<uint8_t>>(VISTREL_OP(shuffle_epi8)(all, as<Register>(indices)));
#elif VISTREL_NEON
  return as<Vec<uint8_t>>(vqtbl1q_u8(vld1q_u8(table), as<uint8x16_t>(indices)));
#else
  uint8_t bytes[kVectorBytes];
  store(bytes, indices);
  for (uint8_t& byte : bytes) byte = table[byte & 15];
  return load(bytes);
#endif
}

// v, negated where sign is below zero. Where sign is 0, v must be 0.
template <class V>
VISTREL_INLINE V withSign(V v, V sign) {
#if VISTREL_SSSE3 && !VISTREL_AVX512
  if constexpr (sizeof(v[0]) == 2)
    return as<V>(VISTREL_OP(sign_epi16)(as<Register>(v), as<Register>(sign)));
  else
    return as<V>(VISTREL_OP(sign_epi32)(as<Register>(v), as<Register>(sign)));
#else
  return sign < 0 ? -v : v;
#endif
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
