// Products of 16-bit lanes, of which the upper bits stay.
#if defined(VISTREL_PRODUCTS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PRODUCTS_INL_H
#undef VISTREL_PRODUCTS_INL_H
#else
#define VISTREL_PRODUCTS_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// a * b / 2^16, truncated.
VISTREL_INLINE Vec<uint16_t> upperProduct(Vec<uint16_t> a, Vec<uint16_t> b) {
#if VISTREL_AVX512
  return as<Vec<uint16_t>>(_mm512_mulhi_epu16(as<__m512i>(a), as<__m512i>(b)));
#elif VISTREL_AVX2
  return as<Vec<uint16_t>>(_mm256_mulhi_epu16(as<__m256i>(a), as<__m256i>(b)));
#elif VISTREL_X86 && defined(__SSE2__)
  return as<Vec<uint16_t>>(_mm_mulhi_epu16(as<__m128i>(a), as<__m128i>(b)));
#elif VISTREL_NEON
  const auto x = as<uint16x8_t>(a), y = as<uint16x8_t>(b);
  const uint32x4_t low = vmull_u16(vget_low_u16(x), vget_low_u16(y));
  const uint32x4_t high = vmull_high_u16(x, y);
  return as<Vec<uint16_t>>(vuzp2q_u16(vreinterpretq_u16_u32(low), vreinterpretq_u16_u32(high)));
#elif VISTREL_WASM
  const v128_t low = wasm_u32x4_extmul_low_u16x8(as<v128_t>(a), as<v128_t>(b));
  const v128_t high = wasm_u32x4_extmul_high_u16x8(as<v128_t>(a), as<v128_t>(b));
  return as<Vec<uint16_t>>(wasm_i16x8_shuffle(low, high, 1, 3, 5, 7, 9, 11, 13, 15));
#else
  const auto x = as<Vec<uint32_t>>(a), y = as<Vec<uint32_t>>(b);
  const Vec<uint32_t> low = (x & 0xFFFF) * (y & 0xFFFF), high = (x >> 16) * (y >> 16);
  return as<Vec<uint16_t>>((low >> 16) | (high & 0xFFFF0000));
#endif
}

// (a * b + 2^14) / 2^15, rounded down. They must not both be -2^15.
VISTREL_INLINE Vec<int16_t> roundedProduct(Vec<int16_t> a, Vec<int16_t> b) {
#if VISTREL_AVX512
  return as<Vec<int16_t>>(_mm512_mulhrs_epi16(as<__m512i>(a), as<__m512i>(b)));
#elif VISTREL_AVX2
  return as<Vec<int16_t>>(_mm256_mulhrs_epi16(as<__m256i>(a), as<__m256i>(b)));
#elif VISTREL_SSSE3
  return as<Vec<int16_t>>(_mm_mulhrs_epi16(as<__m128i>(a), as<__m128i>(b)));
#elif VISTREL_NEON
  return as<Vec<int16_t>>(vqrdmulhq_s16(as<int16x8_t>(a), as<int16x8_t>(b)));
#elif VISTREL_WASM
  return as<Vec<int16_t>>(wasm_i16x8_q15mulr_sat(as<v128_t>(a), as<v128_t>(b)));
#else
  const auto x = as<Vec<uint16_t>>(a), y = as<Vec<uint16_t>>(b);
  const auto upper =
      upperProduct(x, y) - (y & as<Vec<uint16_t>>(a >> 15)) - (x & as<Vec<uint16_t>>(b >> 15));
  return as<Vec<int16_t>>((upper << 1) + (((x * y >> 14) + 1) >> 1));
#endif
}

// The same with one number for all lanes.
VISTREL_INLINE Vec<uint16_t> upperProduct(Vec<uint16_t> v, uint16_t w) {
  return upperProduct(v, Vec<uint16_t>{} + w);
}
VISTREL_INLINE Vec<int16_t> roundedProduct(Vec<int16_t> v, int16_t w) {
  return roundedProduct(v, Vec<int16_t>{} + w);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
