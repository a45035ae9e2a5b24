// Signed arithmetic on samples: words for bytes, double words for words, in vectors of half as many
// samples. Formulas written with it serve both depths, and single samples as ints. Needs lanes.inl.

template <>
struct Lanes<int16_t> {
  typedef int16_t Vector __attribute__((vector_size(kVectorBytes)));
};
template <>
struct Lanes<int32_t> {
  typedef int32_t Vector __attribute__((vector_size(kVectorBytes)));
};

template <class T>
using Wide = VectorOf<std::conditional_t<sizeof(T) == 1, int16_t, int32_t>>;
template <class T>
constexpr size_t kWideLanes = kLanes<T> / 2;

template <class T>
struct NarrowHalfOf;
template <>
struct NarrowHalfOf<uint8_t> {
  typedef uint8_t Vector __attribute__((vector_size(kVectorBytes / 2)));
};
template <>
struct NarrowHalfOf<uint16_t> {
  typedef uint16_t Vector __attribute__((vector_size(kVectorBytes / 2)));
};
template <class T>
using NarrowHalf = typename NarrowHalfOf<T>::Vector;

template <class T>
VISTREL_INLINE Wide<T> loadWide(const T* p) {
#if VISTREL_LEVEL == 4
  const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  return sizeof(T) == 1 ? (Wide<T>)_mm512_maskz_cvtepu8_epi16(~__mmask32{0}, v)
                        : (Wide<T>)_mm512_maskz_cvtepu16_epi32(0xFFFF, v);
#elif VISTREL_LEVEL == 3
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  return sizeof(T) == 1 ? (Wide<T>)_mm256_cvtepu8_epi16(v) : (Wide<T>)_mm256_cvtepu16_epi32(v);
#else
  NarrowHalf<T> v;
  std::memcpy(&v, p, sizeof v);
  return __builtin_convertvector(v, Wide<T>);
#endif
}

// Of values that fit the sample.
template <class T>
VISTREL_INLINE VectorOf<T> narrow(Wide<T> low, Wide<T> high) {
#if VISTREL_LEVEL == 4
  const __m512i packed = sizeof(T) == 1 ? _mm512_packus_epi16((__m512i)low, (__m512i)high)
                                        : _mm512_packus_epi32((__m512i)low, (__m512i)high);
  const __m512i order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
  return (VectorOf<T>)_mm512_maskz_permutexvar_epi64(0xFF, order, packed);
#elif VISTREL_LEVEL == 3
  const __m256i packed = sizeof(T) == 1 ? _mm256_packus_epi16((__m256i)low, (__m256i)high)
                                        : _mm256_packus_epi32((__m256i)low, (__m256i)high);
  return (VectorOf<T>)_mm256_permute4x64_epi64(packed, 0xD8);
#elif VISTREL_LEVEL == 2
  return sizeof(T) == 1 ? (VectorOf<T>)_mm_packus_epi16((__m128i)low, (__m128i)high)
                        : (VectorOf<T>)_mm_packus_epi32((__m128i)low, (__m128i)high);
#else
  const NarrowHalf<T> halves[2] = {__builtin_convertvector(low, NarrowHalf<T>),
                                   __builtin_convertvector(high, NarrowHalf<T>)};
  VectorOf<T> v;
  std::memcpy(&v, halves, sizeof v);
  return v;
#endif
}

// condition: a comparison of values of the same kind.
template <class C, class V>
VISTREL_INLINE V select(C condition, V a, V b) {
  return condition ? a : b;
}
template <class V>
VISTREL_INLINE V smaller(V a, V b) {
  return a < b ? a : b;
}
template <class V>
VISTREL_INLINE V larger(V a, V b) {
  return a > b ? a : b;
}
template <class V>
VISTREL_INLINE V absolute(V v) {
  return v < 0 ? -v : v;
}
VISTREL_INLINE int clampTo(int v, int limit) { return smaller(larger(v, 0), limit); }
template <class V>
VISTREL_INLINE V clampTo(V v, int limit) {
  using Scalar = std::remove_reference_t<decltype(v[0])>;
  const V zero = v - v;
  return smaller(larger(v, zero), V(zero + static_cast<Scalar>(limit)));
}
