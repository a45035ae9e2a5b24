// Floats and doubles in vectors. Needs lanes.inl.

template <>
struct Lanes<float> {
  typedef float Vector __attribute__((vector_size(kVectorBytes)));
};
template <>
struct Lanes<double> {
  typedef double Vector __attribute__((vector_size(kVectorBytes)));
};

// Toward zero, of values that fit 32 bits.
VISTREL_INLINE VectorOf<float> truncated(VectorOf<float> v) {
  typedef int32_t Integers __attribute__((vector_size(kVectorBytes)));
  return __builtin_convertvector(__builtin_convertvector(v, Integers), VectorOf<float>);
}
VISTREL_INLINE VectorOf<double> truncated(VectorOf<double> v) {
  typedef int32_t Integers __attribute__((vector_size(kVectorBytes / 2)));
  return __builtin_convertvector(__builtin_convertvector(v, Integers), VectorOf<double>);
}

VISTREL_INLINE double squareRoot(double v) { return __builtin_sqrt(v); }
VISTREL_INLINE VectorOf<double> squareRoot(VectorOf<double> v) {
#if VISTREL_LEVEL == 4
  return (VectorOf<double>)_mm512_maskz_sqrt_pd(0xFF, (__m512d)v);
#elif VISTREL_LEVEL == 3
  return (VectorOf<double>)_mm256_sqrt_pd((__m256d)v);
#elif VISTREL_X86
  return (VectorOf<double>)_mm_sqrt_pd((__m128d)v);
#else
  for (size_t k = 0; k < kLanes<double>; ++k) v[k] = squareRoot(v[k]);
  return v;
#endif
}

// 1 / sqrt(v) to about twelve bits: the processor's packed operation, the same at every level. It
// is never that of AVX-512, which has another table.
VISTREL_INLINE float approximateRoot(float v) {
#if VISTREL_X86
  return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(v)));
#else
  return 1 / __builtin_sqrtf(v);
#endif
}
VISTREL_INLINE VectorOf<float> approximateRoot(VectorOf<float> v) {
#if VISTREL_LEVEL == 4
  const auto low = _mm256_rsqrt_ps(__builtin_shufflevector(v, v, 0, 1, 2, 3, 4, 5, 6, 7));
  const auto high = _mm256_rsqrt_ps(__builtin_shufflevector(v, v, 8, 9, 10, 11, 12, 13, 14, 15));
  return __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
#elif VISTREL_LEVEL == 3
  return (VectorOf<float>)_mm256_rsqrt_ps((__m256)v);
#elif VISTREL_X86
  return (VectorOf<float>)_mm_rsqrt_ps((__m128)v);
#else
  for (size_t k = 0; k < kLanes<float>; ++k) v[k] = approximateRoot(v[k]);
  return v;
#endif
}
