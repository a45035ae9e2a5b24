// Vectors of bytes and words and the exact operations on them, for one level (VISTREL_LEVEL).

#if VISTREL_LEVEL >= 4
constexpr size_t kVectorBytes = 64;
#elif VISTREL_LEVEL == 3
constexpr size_t kVectorBytes = 32;
#else
constexpr size_t kVectorBytes = 16;
#endif

template <class T>
struct Lanes;
template <>
struct Lanes<uint8_t> {
  typedef uint8_t Vector __attribute__((vector_size(kVectorBytes)));
};
template <>
struct Lanes<uint16_t> {
  typedef uint16_t Vector __attribute__((vector_size(kVectorBytes)));
};
template <class T>
using VectorOf = typename Lanes<T>::Vector;
template <class T>
constexpr size_t kLanes = kVectorBytes / sizeof(T);

template <class T>
VISTREL_INLINE VectorOf<T> load(const T* p) {
  VectorOf<T> v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

template <class T>
VISTREL_INLINE void store(T* p, VectorOf<T> v) {
  std::memcpy(p, &v, sizeof v);
}

// Means that truncate, exact without widening: the processor's mean rounds up, and is one too
// high where the low bits differ.
VISTREL_INLINE auto roundedMean(VectorOf<uint8_t> a, VectorOf<uint8_t> b) {
#if VISTREL_LEVEL == 4
  return (VectorOf<uint8_t>)_mm512_avg_epu8((__m512i)a, (__m512i)b);
#elif VISTREL_LEVEL == 3
  return (VectorOf<uint8_t>)_mm256_avg_epu8((__m256i)a, (__m256i)b);
#elif VISTREL_X86
  return (VectorOf<uint8_t>)_mm_avg_epu8((__m128i)a, (__m128i)b);
#else
  return (a | b) - ((a ^ b) >> 1);
#endif
}
VISTREL_INLINE auto roundedMean(VectorOf<uint16_t> a, VectorOf<uint16_t> b) {
#if VISTREL_LEVEL == 4
  return (VectorOf<uint16_t>)_mm512_avg_epu16((__m512i)a, (__m512i)b);
#elif VISTREL_LEVEL == 3
  return (VectorOf<uint16_t>)_mm256_avg_epu16((__m256i)a, (__m256i)b);
#elif VISTREL_X86
  return (VectorOf<uint16_t>)_mm_avg_epu16((__m128i)a, (__m128i)b);
#else
  return (a | b) - ((a ^ b) >> 1);
#endif
}

template <class V>
VISTREL_INLINE V mean2(V a, V b) {
  return roundedMean(a, b) - ((a ^ b) & 1);
}

// The pair means lose the low bits of two sums; they count where both and the last one are set.
template <class V>
VISTREL_INLINE V mean4(V a, V b, V c, V d) {
  const V p = mean2(a, b), q = mean2(c, d);
  return mean2(p, q) + ((a ^ b) & (c ^ d) & (p ^ q) & 1);
}

VISTREL_INLINE int mean2(int a, int b) { return (a + b) >> 1; }
VISTREL_INLINE int mean4(int a, int b, int c, int d) { return (a + b + c + d) >> 2; }
