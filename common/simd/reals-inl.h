// Operations on vectors of floats and doubles.
#if defined(VISTREL_REALS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_REALS_INL_H
#undef VISTREL_REALS_INL_H
#else
#define VISTREL_REALS_INL_H
#endif

#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Rounds toward zero. The values must fit 32 bits.
VISTREL_INLINE Vec<float> truncated(Vec<float> v) {
  return __builtin_convertvector(__builtin_convertvector(v, Vec<int32_t>), Vec<float>);
}
VISTREL_INLINE Vec<double> truncated(Vec<double> v) {
#if VISTREL_NEON
  return as<Vec<double>>(vcvtq_f64_s64(vcvtq_s64_f64(as<float64x2_t>(v))));
#elif VISTREL_WASM
  const v128_t integers = wasm_i32x4_trunc_sat_f64x2_zero(as<v128_t>(v));
  return as<Vec<double>>(wasm_f64x2_convert_low_i32x4(integers));
#else
  using Half = Vec<int32_t, kVectorBytes / 2>;
  return __builtin_convertvector(__builtin_convertvector(v, Half), Vec<double>);
#endif
}

VISTREL_INLINE double squareRoot(double v) { return __builtin_sqrt(v); }
VISTREL_INLINE Vec<double> squareRoot(Vec<double> v) {
#if VISTREL_AVX512
  return as<Vec<double>>(_mm512_maskz_sqrt_pd(0xFF, as<__m512d>(v)));
#elif VISTREL_AVX2
  return as<Vec<double>>(_mm256_sqrt_pd(as<__m256d>(v)));
#elif VISTREL_X86
  return as<Vec<double>>(_mm_sqrt_pd(as<__m128d>(v)));
#elif VISTREL_NEON
  return as<Vec<double>>(vsqrtq_f64(as<float64x2_t>(v)));
#elif VISTREL_WASM
  return as<Vec<double>>(wasm_f64x2_sqrt(as<v128_t>(v)));
#else
  for (size_t k = 0; k < kLanes<double>; ++k) v[k] = squareRoot(v[k]);
  return v;
#endif
}

// 1 / sqrt(v) to about twelve bits: the processor's vector operation, the same at every level. The
// operation of AVX-512 is never used, since its results differ.
VISTREL_INLINE float approximateRoot(float v) {
#if VISTREL_X86
  return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(v)));
#else
  return 1 / __builtin_sqrtf(v);
#endif
}
VISTREL_INLINE Vec<float> approximateRoot(Vec<float> v) {
#if VISTREL_AVX512
  const auto low = _mm256_rsqrt_ps(__builtin_shufflevector(v, v, 0, 1, 2, 3, 4, 5, 6, 7));
  const auto high = _mm256_rsqrt_ps(__builtin_shufflevector(v, v, 8, 9, 10, 11, 12, 13, 14, 15));
  return __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
#elif VISTREL_AVX2
  return as<Vec<float>>(_mm256_rsqrt_ps(as<__m256>(v)));
#elif VISTREL_X86
  return as<Vec<float>>(_mm_rsqrt_ps(as<__m128>(v)));
#elif VISTREL_NEON
  return 1 / as<Vec<float>>(vsqrtq_f32(as<float32x4_t>(v)));
#elif VISTREL_WASM
  return 1 / as<Vec<float>>(wasm_f32x4_sqrt(as<v128_t>(v)));
#else
  for (size_t k = 0; k < kLanes<float>; ++k) v[k] = approximateRoot(v[k]);
  return v;
#endif
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
