// Vectors of the level's length, and exact operations on each lane. Formulas written with these
// operations also work on single samples, as ints.
#if defined(VISTREL_LANES_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_LANES_INL_H
#undef VISTREL_LANES_INL_H
#else
#define VISTREL_LANES_INL_H
#endif

#include <bit>

#include "common/simd/simd.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_AVX512
constexpr size_t kVectorBytes = 64;
#elif VISTREL_AVX2
constexpr size_t kVectorBytes = 32;
#else
constexpr size_t kVectorBytes = 16;
#endif

template <class T, size_t bytes>
struct VectorType {
  typedef T Type __attribute__((vector_size(bytes)));
};
// A vector of T: of the level's length, or of half or twice that.
template <class T, size_t bytes = kVectorBytes>
using Vec = typename VectorType<T, bytes>::Type;
template <class T>
constexpr size_t kLanes = kVectorBytes / sizeof(T);

// Whether the first of the short lanes in the place of a long one is its lowest part.
constexpr bool kFirstIsLow = std::endian::native == std::endian::little;

// Values for two neighbouring lanes of 16 bits, as one of 32.
constexpr uint32_t pairOf(uint32_t first, uint32_t second) {
  return kFirstIsLow ? first | second << 16 : first << 16 | second;
}

// The same bits as another vector type of the same size.
template <class V, class U>
VISTREL_INLINE V as(U v) {
  static_assert(sizeof(V) == sizeof(U));
  return (V)v;
}

// The value itself; in WebAssembly, as if it were made here and nothing were known of it. Otherwise
// clang 14 shifts lane by lane, if it has found elsewhere that all lanes have the same count, and
// replaces factors that it knows by such shifts.
template <class V>
VISTREL_INLINE V madeHere(V v) {
#if VISTREL_WASM
  __asm__ volatile("" : "+r"(v));
#endif
  return v;
}

template <class T>
VISTREL_INLINE Vec<T> load(const T* p) {
  Vec<T> v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

template <class T>
VISTREL_INLINE void store(T* p, Vec<T> v) {
  std::memcpy(p, &v, sizeof v);
}

// Truncating means, exact without widening. The processor's mean rounds up, so it is one too high
// where the low bits differ.
VISTREL_INLINE auto roundedMean(Vec<uint8_t> a, Vec<uint8_t> b) {
#if VISTREL_AVX512
  return as<Vec<uint8_t>>(_mm512_avg_epu8(as<__m512i>(a), as<__m512i>(b)));
#elif VISTREL_AVX2
  return as<Vec<uint8_t>>(_mm256_avg_epu8(as<__m256i>(a), as<__m256i>(b)));
#elif VISTREL_X86
  return as<Vec<uint8_t>>(_mm_avg_epu8(as<__m128i>(a), as<__m128i>(b)));
#elif VISTREL_NEON
  return as<Vec<uint8_t>>(vrhaddq_u8(as<uint8x16_t>(a), as<uint8x16_t>(b)));
#elif VISTREL_WASM
  return as<Vec<uint8_t>>(wasm_u8x16_avgr(as<v128_t>(a), as<v128_t>(b)));
#else
  return (a | b) - ((a ^ b) >> 1);
#endif
}
VISTREL_INLINE auto roundedMean(Vec<uint16_t> a, Vec<uint16_t> b) {
#if VISTREL_AVX512
  return as<Vec<uint16_t>>(_mm512_avg_epu16(as<__m512i>(a), as<__m512i>(b)));
#elif VISTREL_AVX2
  return as<Vec<uint16_t>>(_mm256_avg_epu16(as<__m256i>(a), as<__m256i>(b)));
#elif VISTREL_X86
  return as<Vec<uint16_t>>(_mm_avg_epu16(as<__m128i>(a), as<__m128i>(b)));
#elif VISTREL_NEON
  return as<Vec<uint16_t>>(vrhaddq_u16(as<uint16x8_t>(a), as<uint16x8_t>(b)));
#elif VISTREL_WASM
  return as<Vec<uint16_t>>(wasm_u16x8_avgr(as<v128_t>(a), as<v128_t>(b)));
#else
  return (a | b) - ((a ^ b) >> 1);
#endif
}

template <class V>
VISTREL_INLINE V mean2(V a, V b) {
#if VISTREL_NEON
  if constexpr (std::is_same_v<V, Vec<uint8_t>>)
    return as<V>(vhaddq_u8(as<uint8x16_t>(a), as<uint8x16_t>(b)));
  else
    return as<V>(vhaddq_u16(as<uint16x8_t>(a), as<uint16x8_t>(b)));
#else
  return roundedMean(a, b) - ((a ^ b) & 1);
#endif
}

template <class V>
VISTREL_INLINE V smaller(V a, V b) {
  return a < b ? a : b;
}

// The means of pairs drop the low bits of two sums. These count only if both are set and p + q is
// odd. With one mean rounded down and the other up, the result is exact, or one too high if only
// the latter was rounded. NEON has both means: of two results, the smaller is exact.
template <class V>
VISTREL_INLINE V mean4(V a, V b, V c, V d) {
#if VISTREL_NEON
  return smaller(mean2(mean2(a, b), roundedMean(c, d)), mean2(roundedMean(a, b), mean2(c, d)));
#else
  const V p = mean2(a, b), q = mean2(c, d);
  return mean2(p, q) + ((a ^ b) & (c ^ d) & (p ^ q) & 1);
#endif
}

VISTREL_INLINE int mean2(int a, int b) { return (a + b) >> 1; }
VISTREL_INLINE int mean4(int a, int b, int c, int d) { return (a + b + c + d) >> 2; }

// condition: the result of comparing values of the same kind.
template <class C, class V>
VISTREL_INLINE V select(C condition, V a, V b) {
  return condition ? a : b;
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

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
