// A vector of samples as values in wider lanes. All ways of widening have the same members:
//
//   Sample, Value    the types of a sample and of a vector of values
//   kParts           the number of vectors that hold the values
//   load(p, i)       part i of the samples at p
//   part(v, i)       part i of a vector of samples
//   join(parts)      values that fit the sample, as samples again
//
//   LowHigh    the lower half of the samples, then the upper half
//   EvenOdd    the even elements, then the odd ones: no sample changes its place
//   AsSigned   one part, in lanes of the sample's length
//   AsDouble   doubles: part i has elements i, i + kParts, i + 2 * kParts ...
#if defined(VISTREL_WIDEN_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_WIDEN_INL_H
#undef VISTREL_WIDEN_INL_H
#else
#define VISTREL_WIDEN_INL_H
#endif

#include "common/depth.h"
#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
constexpr size_t kWidenedLanes = kLanes<T> / 2;

template <class T>
VISTREL_INLINE Vec<Widened<T>> loadWidened(const T* p) {
#if VISTREL_AVX512
  const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  if constexpr (sizeof(T) == 1)
    return as<Vec<Widened<T>>>(_mm512_maskz_cvtepu8_epi16(~__mmask32{0}, v));
  else
    return as<Vec<Widened<T>>>(_mm512_maskz_cvtepu16_epi32(0xFFFF, v));
#elif VISTREL_AVX2
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  return as<Vec<Widened<T>>>(sizeof(T) == 1 ? _mm256_cvtepu8_epi16(v) : _mm256_cvtepu16_epi32(v));
#elif VISTREL_NEON
  if constexpr (sizeof(T) == 1)
    return as<Vec<Widened<T>>>(vmovl_u8(vld1_u8(p)));
  else
    return as<Vec<Widened<T>>>(vmovl_u16(vld1_u16(p)));
#elif VISTREL_WASM
  return as<Vec<Widened<T>>>(sizeof(T) == 1 ? wasm_u16x8_load8x8(p) : wasm_u32x4_load16x4(p));
#else
  Vec<T, kVectorBytes / 2> v;
  std::memcpy(&v, p, sizeof v);
  return __builtin_convertvector(v, Vec<Widened<T>>);
#endif
}

template <class T>
struct LowHigh {
  using Sample = T;
  using Value = Vec<Widened<T>>;
  static constexpr size_t kParts = 2;

  VISTREL_INLINE static Value load(const T* p, size_t i) {
    return loadWidened(p + i * kWidenedLanes<T>);
  }

  VISTREL_INLINE static Vec<T> join(const Value (&parts)[2]) {
    const Value low = parts[0], high = parts[1];
#if VISTREL_AVX512
    const __m512i narrow = sizeof(T) == 1
                               ? _mm512_packus_epi16(as<__m512i>(low), as<__m512i>(high))
                               : _mm512_packus_epi32(as<__m512i>(low), as<__m512i>(high));
    const __m512i order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
    return as<Vec<T>>(_mm512_maskz_permutexvar_epi64(0xFF, order, narrow));
#elif VISTREL_AVX2
    const __m256i narrow = sizeof(T) == 1
                               ? _mm256_packus_epi16(as<__m256i>(low), as<__m256i>(high))
                               : _mm256_packus_epi32(as<__m256i>(low), as<__m256i>(high));
    return as<Vec<T>>(_mm256_permute4x64_epi64(narrow, 0xD8));
#elif VISTREL_SSE41
    return as<Vec<T>>(sizeof(T) == 1 ? _mm_packus_epi16(as<__m128i>(low), as<__m128i>(high))
                                     : _mm_packus_epi32(as<__m128i>(low), as<__m128i>(high)));
#elif VISTREL_NEON
    if constexpr (sizeof(T) == 1)
      return as<Vec<T>>(vuzp1q_u8(as<uint8x16_t>(low), as<uint8x16_t>(high)));
    else
      return as<Vec<T>>(vuzp1q_u16(as<uint16x8_t>(low), as<uint16x8_t>(high)));
#elif VISTREL_WASM
    return as<Vec<T>>(sizeof(T) == 1 ? wasm_u8x16_narrow_i16x8(as<v128_t>(low), as<v128_t>(high))
                                     : wasm_u16x8_narrow_i32x4(as<v128_t>(low), as<v128_t>(high)));
#else
    using Half = Vec<T, kVectorBytes / 2>;
    const Half halves[2] = {__builtin_convertvector(low, Half),
                            __builtin_convertvector(high, Half)};
    Vec<T> v;
    std::memcpy(&v, halves, sizeof v);
    return v;
#endif
  }
};

template <class T>
struct EvenOdd {
  using Sample = T;
  using Value = Vec<Widened<T>>;
  static constexpr size_t kParts = 2;

  VISTREL_INLINE static Value part(Vec<T> v, size_t i) {
    const auto pairs = as<Pairs>(v);
    return as<Value>((i == 0) == kFirstIsLow ? pairs & static_cast<T>(-1) : pairs >> kBits);
  }
  VISTREL_INLINE static Value load(const T* p, size_t i) {
    return part(VISTREL_NAMESPACE::load(p), i);
  }
  VISTREL_INLINE static Vec<T> join(const Value (&parts)[2]) {
    const Value low = parts[!kFirstIsLow], high = parts[kFirstIsLow];
    return as<Vec<T>>(as<Pairs>(low) | as<Pairs>(high) << kBits);
  }

 private:
  using Pairs = Vec<std::make_unsigned_t<Widened<T>>>;
  static constexpr int kBits = 8 * static_cast<int>(sizeof(T));
};

// For samples of at most twelve bits, so that the sum of eight still fits.
template <class T>
struct AsSigned {
  using Sample = T;
  using Value = Vec<std::make_signed_t<T>>;
  static constexpr size_t kParts = 1;

  VISTREL_INLINE static Value part(Vec<T> v, size_t) { return as<Value>(v); }
  VISTREL_INLINE static Value load(const T* p, size_t) {
    return as<Value>(VISTREL_NAMESPACE::load(p));
  }
  VISTREL_INLINE static Vec<T> join(const Value (&parts)[1]) { return as<Vec<T>>(parts[0]); }
};

// Values of 16 bits, for bytes and for 16-bit samples of at most twelve bits.
template <class T>
using FastSums = std::conditional_t<sizeof(T) == 1, EvenOdd<T>, AsSigned<T>>;

using Doubles = Vec<double, 2 * kVectorBytes>;  // one double for each 32 bits of a vector

VISTREL_INLINE Doubles toDoubles(Vec<int32_t> v) {
#if VISTREL_NEON
  const auto integers = as<int32x4_t>(v);
  const float64x2_t halves[2] = {vcvtq_f64_s64(vmovl_s32(vget_low_s32(integers))),
                                 vcvtq_f64_s64(vmovl_high_s32(integers))};
  Doubles d;
  std::memcpy(&d, halves, sizeof d);
  return d;
#elif VISTREL_WASM
  const auto integers = as<v128_t>(v);
  const v128_t halves[2] = {
      wasm_f64x2_convert_low_i32x4(integers),
      wasm_f64x2_convert_low_i32x4(wasm_i32x4_shuffle(integers, integers, 2, 3, 2, 3))};
  Doubles d;
  std::memcpy(&d, halves, sizeof d);
  return d;
#else
  return __builtin_convertvector(v, Doubles);
#endif
}
// Rounds toward zero.
VISTREL_INLINE Vec<int32_t> toIntegers(Doubles d) {
#if VISTREL_NEON
  float64x2_t halves[2];
  std::memcpy(halves, &d, sizeof d);
  return as<Vec<int32_t>>(
      vmovn_high_s64(vmovn_s64(vcvtq_s64_f64(halves[0])), vcvtq_s64_f64(halves[1])));
#elif VISTREL_WASM
  v128_t halves[2];
  std::memcpy(halves, &d, sizeof d);
  return as<Vec<int32_t>>(wasm_i32x4_shuffle(wasm_i32x4_trunc_sat_f64x2_zero(halves[0]),
                                             wasm_i32x4_trunc_sat_f64x2_zero(halves[1]), 0, 1, 4,
                                             5));
#else
  return __builtin_convertvector(d, Vec<int32_t>);
#endif
}

template <class T>
struct AsDouble {
  using Sample = T;
  using Value = Doubles;
  static constexpr size_t kParts = sizeof(int32_t) / sizeof(T);

  VISTREL_INLINE static Doubles part(Vec<T> v, size_t i) {
    const int unused = kBits * static_cast<int>(kParts - 1) - shiftOf(i);
    const Lane lanes = as<Lane>(v) << unused >> (kBits * static_cast<int>(kParts - 1));
    return toDoubles(as<Vec<int32_t>>(lanes));
  }

  // Truncates and limits values. They must be at least 0 and fit 32 bits.
  VISTREL_INLINE static Vec<T> join(const Doubles (&parts)[kParts], int limit) {
    Lane joined{};
    for (size_t i = 0; i < kParts; ++i) {
      const auto v = toIntegers(parts[i]);
      joined |= as<Lane>(smaller(v, v - v + limit)) << shiftOf(i);
    }
    return as<Vec<T>>(joined);
  }

 private:
  using Lane = Vec<uint32_t>;
  static constexpr int kBits = 8 * static_cast<int>(sizeof(T));

  // Of part i within its lane.
  static constexpr int shiftOf(size_t i) {
    return kBits * static_cast<int>(kFirstIsLow ? i : kParts - 1 - i);
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
