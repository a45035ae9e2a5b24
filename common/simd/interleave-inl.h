// Interleaves six vectors of half rows (blue, green, red; even and odd columns) and stores the
// pixels at d and, unless it is null, at copy. A pair of pixels is three units of two samples: x =
// (B, G), y = (R, B), z = (G, R). So three unpackings form vectors of units, and the interleaving
// of these three vectors gives the pixels.
#if defined(VISTREL_INTERLEAVE_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_INTERLEAVE_INL_H
#undef VISTREL_INTERLEAVE_INL_H
#else
#define VISTREL_INTERLEAVE_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/registers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_GROUPS

// When vectors x, y, z of n units are interleaved, unit i of channel c goes to position 3 * i + c.
// Modulo n, these positions all differ within a channel: each channel takes one permutation, and
// the rest is blends.
constexpr int unitAt(int n, int channel, int slot) {
  const int inverseOf3 = n % 3 == 2 ? (n + 1) / 3 : (2 * n + 1) / 3;
  return (inverseOf3 * (slot - channel + n)) % n;
}

template <int n, int unitBytes>
struct UnitPermutation {
  alignas(64) uint8_t bytes[3][n * unitBytes];
  constexpr UnitPermutation() : bytes() {
    for (int c = 0; c < 3; ++c)
      for (int i = 0; i < n * unitBytes; ++i)
        bytes[c][i] = static_cast<uint8_t>(unitAt(n, c, i / unitBytes) * unitBytes + i % unitBytes);
  }
};

// The units of output vector j that come from channel c, as a bit mask.
constexpr uint32_t unitsOf(int n, int j, int c) {
  uint32_t mask = 0;
  for (int slot = 0; slot < n; ++slot)
    if ((n * j + slot) % 3 == c) mask |= uint32_t{1} << slot;
  return mask;
}

#if VISTREL_AVX512

template <class T>
constexpr int kUnits = 32 / static_cast<int>(sizeof(T));
template <class T>
constexpr UnitPermutation<kUnits<T>, 2 * static_cast<int>(sizeof(T))> kPermutation;

template <class T, int j>
VISTREL_INLINE __m512i unitsFrom(__m512i x, __m512i y, __m512i z) {
  constexpr uint32_t ofY = unitsOf(kUnits<T>, j, 1), ofZ = unitsOf(kUnits<T>, j, 2);
  if constexpr (sizeof(T) == 1)
    return _mm512_mask_blend_epi16(ofZ, _mm512_mask_blend_epi16(ofY, x, y), z);
  else
    return _mm512_mask_blend_epi32(ofZ, _mm512_mask_blend_epi32(ofY, x, y), z);
}

// Masks of all lanes, because the unmasked forms make g++ 12 warn of its own header.
VISTREL_INLINE __m512i permuteAll(__m512i v, const uint8_t* order) {
  return _mm512_maskz_permutexvar_epi8(~__mmask64{0}, _mm512_load_si512(order), v);
}
VISTREL_INLINE __m512i permuteQuarters(__m512i v) {
  return _mm512_maskz_permutexvar_epi64(0xFF, _mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), v);
}

template <class T>
VISTREL_INLINE void interleave3(T* d, T* copy, __m512i x, __m512i y, __m512i z) {
  x = permuteAll(x, kPermutation<T>.bytes[0]);
  y = permuteAll(y, kPermutation<T>.bytes[1]);
  z = permuteAll(z, kPermutation<T>.bytes[2]);
  const __m512i v[] = {unitsFrom<T, 0>(x, y, z), unitsFrom<T, 1>(x, y, z),
                       unitsFrom<T, 2>(x, y, z)};
  for (int i = 0; i < 3; ++i) _mm512_storeu_si512(d + i * kLanes<T>, v[i]);
  if (copy)
    for (int i = 0; i < 3; ++i) _mm512_storeu_si512(copy + i * kLanes<T>, v[i]);
}

template <class T>
struct UnitPairs {  // pairs (a, b): from the first half of the vectors, and from the second
  __m512i lo, hi;
  VISTREL_INLINE UnitPairs(Vec<T> va, Vec<T> vb) {
    const __m512i a = permuteQuarters(as<__m512i>(va)), b = permuteQuarters(as<__m512i>(vb));
    lo = sizeof(T) == 1 ? _mm512_unpacklo_epi8(a, b) : _mm512_unpacklo_epi16(a, b);
    hi = sizeof(T) == 1 ? _mm512_unpackhi_epi8(a, b) : _mm512_unpackhi_epi16(a, b);
  }
};

template <class T>
VISTREL_INLINE void storePixels(T* d, T* copy, const Vec<T> (&b)[2], const Vec<T> (&g)[2],
                                const Vec<T> (&r)[2]) {
  const UnitPairs<T> x(b[0], g[0]), y(r[0], b[1]), z(g[1], r[1]);
  interleave3<T>(d, copy, x.lo, y.lo, z.lo);
  interleave3<T>(d + 3 * kLanes<T>, copy ? copy + 3 * kLanes<T> : nullptr, x.hi, y.hi, z.hi);
}

#else

template <class T>
constexpr int kUnits = 8 / static_cast<int>(sizeof(T));  // of 16 bytes
template <class T>
constexpr UnitPermutation<kUnits<T>, 2 * static_cast<int>(sizeof(T))> kPermutation;

// The mask of unitsOf for a blend of 16-bit lanes.
template <class T>
constexpr int lanes16Of(int j, int c) {
  const uint32_t units = unitsOf(kUnits<T>, j, c);
  if (sizeof(T) == 1) return static_cast<int>(units);
  int lanes = 0;
  for (int slot = 0; slot < 4; ++slot)
    if (units >> slot & 1) lanes |= 3 << (2 * slot);
  return lanes;
}

template <class T>
VISTREL_INLINE Register unpackLow(Vec<T> a, Vec<T> b) {
  return sizeof(T) == 1 ? VISTREL_OP(unpacklo_epi8)(as<Register>(a), as<Register>(b))
                        : VISTREL_OP(unpacklo_epi16)(as<Register>(a), as<Register>(b));
}
template <class T>
VISTREL_INLINE Register unpackHigh(Vec<T> a, Vec<T> b) {
  return sizeof(T) == 1 ? VISTREL_OP(unpackhi_epi8)(as<Register>(a), as<Register>(b))
                        : VISTREL_OP(unpackhi_epi16)(as<Register>(a), as<Register>(b));
}

template <class T, int j>
VISTREL_INLINE Register unitsFrom(Register x, Register y, Register z) {
  return blend16<lanes16Of<T>(j, 2)>(blend16<lanes16Of<T>(j, 1)>(x, y), z);
}

struct Three {
  Register v[3];
};

// Stores the first groups of all registers in order, then the second groups.
VISTREL_INLINE void storeInGroupOrder(void* d, const Register (&v)[6]) {
  Register* out = static_cast<Register*>(d);
#if VISTREL_AVX2
  for (int i = 0; i < 3; ++i) {
    storeRegister(out + i, _mm256_permute2x128_si256(v[2 * i], v[2 * i + 1], 0x20));
    storeRegister(out + 3 + i, _mm256_permute2x128_si256(v[2 * i], v[2 * i + 1], 0x31));
  }
#else
  for (int i = 0; i < 6; ++i) storeRegister(out + i, v[i]);
#endif
}

template <class T>
VISTREL_INLINE Three interleave3(Register x, Register y, Register z) {
  x = permute(x, kPermutation<T>.bytes[0]);
  y = permute(y, kPermutation<T>.bytes[1]);
  z = permute(z, kPermutation<T>.bytes[2]);
  return {{unitsFrom<T, 0>(x, y, z), unitsFrom<T, 1>(x, y, z), unitsFrom<T, 2>(x, y, z)}};
}

template <class T>
VISTREL_INLINE void storePixels(T* d, T* copy, const Vec<T> (&b)[2], const Vec<T> (&g)[2],
                                const Vec<T> (&r)[2]) {
  const Three lo =
      interleave3<T>(unpackLow<T>(b[0], g[0]), unpackLow<T>(r[0], b[1]), unpackLow<T>(g[1], r[1]));
  const Three hi = interleave3<T>(unpackHigh<T>(b[0], g[0]), unpackHigh<T>(r[0], b[1]),
                                  unpackHigh<T>(g[1], r[1]));
  const Register v[] = {lo.v[0], lo.v[1], lo.v[2], hi.v[0], hi.v[1], hi.v[2]};
  storeInGroupOrder(d, v);
  if (copy) storeInGroupOrder(copy, v);
}

#endif

#elif VISTREL_NEON

template <bool upper>
VISTREL_INLINE Vec<uint8_t> inTurn(const Vec<uint8_t> (&halves)[2]) {
  const auto even = as<uint8x16_t>(halves[0]), odd = as<uint8x16_t>(halves[1]);
  return as<Vec<uint8_t>>(upper ? vzip2q_u8(even, odd) : vzip1q_u8(even, odd));
}
template <bool upper>
VISTREL_INLINE Vec<uint16_t> inTurn(const Vec<uint16_t> (&halves)[2]) {
  const auto even = as<uint16x8_t>(halves[0]), odd = as<uint16x8_t>(halves[1]);
  return as<Vec<uint16_t>>(upper ? vzip2q_u16(even, odd) : vzip1q_u16(even, odd));
}
VISTREL_INLINE void store3(uint8_t* d, Vec<uint8_t> b, Vec<uint8_t> g, Vec<uint8_t> r) {
  const uint8x16x3_t pixels = {as<uint8x16_t>(b), as<uint8x16_t>(g), as<uint8x16_t>(r)};
  vst3q_u8(d, pixels);
}
VISTREL_INLINE void store3(uint16_t* d, Vec<uint16_t> b, Vec<uint16_t> g, Vec<uint16_t> r) {
  const uint16x8x3_t pixels = {as<uint16x8_t>(b), as<uint16x8_t>(g), as<uint16x8_t>(r)};
  vst3q_u16(d, pixels);
}

template <class T>
VISTREL_INLINE void storePixels(T* d, T* copy, const Vec<T> (&b)[2], const Vec<T> (&g)[2],
                                const Vec<T> (&r)[2]) {
  const auto storeAt = [&](T* to) {
    store3(to, inTurn<false>(b), inTurn<false>(g), inTurn<false>(r));
    store3(to + 3 * kLanes<T>, inTurn<true>(b), inTurn<true>(g), inTurn<true>(r));
  };
  storeAt(d);
  if (copy) storeAt(copy);
}

#else

template <class T>
VISTREL_INLINE void storePixels(T* d, T* copy, const Vec<T> (&b)[2], const Vec<T> (&g)[2],
                                const Vec<T> (&r)[2]) {
  for (size_t k = 0; k < kLanes<T>; ++k)
    for (size_t odd = 0; odd < 2; ++odd) {
      T* pixel = d + 3 * (2 * k + odd);
      pixel[0] = b[odd][k];
      pixel[1] = g[odd][k];
      pixel[2] = r[odd][k];
    }
  if (copy) std::memcpy(copy, d, 6 * kLanes<T> * sizeof(T));
}

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
