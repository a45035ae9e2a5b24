// Separates interleaved triples, such as pixels, into three vectors: the reverse of
// interleave-inl.h. In a vector of n samples, a channel has every third position. As 3 doesn't
// divide n, these positions differ between the vectors. So two blends collect a channel, and one
// permutation puts it in order. NEON has an instruction for it.
#if defined(VISTREL_DEINTERLEAVE_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_DEINTERLEAVE_INL_H
#undef VISTREL_DEINTERLEAVE_INL_H
#else
#define VISTREL_DEINTERLEAVE_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/registers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

template <class T>
struct Channels {
  Vec<T> first, second, third;
};

#endif

#if VISTREL_GROUPS

// The bytes within which a permutation moves samples.
#if VISTREL_AVX512
constexpr int kSpan = 64;
#else
constexpr int kSpan = 16;
#endif

// Sample i of channel c is the sample 3 * i + c of all three vectors.
template <int sampleBytes>
struct ChannelOrder {
  alignas(64) uint8_t bytes[3][kSpan];
  constexpr ChannelOrder() : bytes() {
    for (int c = 0; c < 3; ++c)
      for (int i = 0; i < kSpan; ++i)
        bytes[c][i] = static_cast<uint8_t>(
            ((3 * (i / sampleBytes) + c) * sampleBytes + i % sampleBytes) % kSpan);
  }
};
template <class T>
constexpr ChannelOrder<static_cast<int>(sizeof(T))> kChannelOrder;

// Whether byte i of vector j belongs to channel c.
constexpr bool belongs(int sampleBytes, int i, int j, int c) {
  return (kSpan / sampleBytes * j + i / sampleBytes) % 3 == c;
}

#if VISTREL_AVX512

template <class T, int j, int c>
constexpr uint64_t bytesOfChannel() {
  uint64_t mask = 0;
  for (int i = 0; i < kSpan; ++i)
    mask |= uint64_t{belongs(static_cast<int>(sizeof(T)), i, j, c)} << i;
  return mask;
}

template <class T, int c>
VISTREL_INLINE Vec<T> channel(__m512i v0, __m512i v1, __m512i v2) {
  constexpr __mmask64 from1 = bytesOfChannel<T, 1, c>(), from2 = bytesOfChannel<T, 2, c>();
  const __m512i two = _mm512_mask_blend_epi8(from1, v0, v1);
  const __m512i all = _mm512_mask_blend_epi8(from2, two, v2);
  const __m512i order = _mm512_load_si512(kChannelOrder<T>.bytes[c]);
  return as<Vec<T>>(_mm512_maskz_permutexvar_epi8(~__mmask64{0}, order, all));
}

// Otherwise g++ 12 reloads a vector wherever it is used.
VISTREL_INLINE __m512i loadOnce(const uint8_t* p) {
  __m512i v = _mm512_loadu_si512(p);
  __asm__("" : "+v"(v));
  return v;
}

template <class T>
VISTREL_INLINE Channels<T> loadChannels(const uint8_t* p) {
  const __m512i v0 = loadOnce(p), v1 = loadOnce(p + kSpan), v2 = loadOnce(p + 2 * kSpan);
  return {channel<T, 0>(v0, v1, v2), channel<T, 1>(v0, v1, v2), channel<T, 2>(v0, v1, v2)};
}

#else

template <int sampleBytes>
struct ChannelMasks {
  alignas(16) uint8_t bytes[3][3][kSpan];  // by vector, then by channel
  constexpr ChannelMasks() : bytes() {
    for (int j = 0; j < 3; ++j)
      for (int c = 0; c < 3; ++c)
        for (int i = 0; i < kSpan; ++i) bytes[j][c][i] = belongs(sampleBytes, i, j, c) ? 0xFF : 0;
  }
};
template <class T>
constexpr ChannelMasks<static_cast<int>(sizeof(T))> kChannelMasks;

// b where the mask has bytes of 255, a where it has zeros.
VISTREL_INLINE Register blendBytes(Register a, Register b, Register mask) {
#if VISTREL_SSE41 || VISTREL_WASM
  return VISTREL_OP(blendv_epi8)(a, b, mask);
#else
  return _mm_or_si128(_mm_andnot_si128(mask, a), _mm_and_si128(mask, b));
#endif
}

template <class T, int c>
VISTREL_INLINE Vec<T> channel(Register v0, Register v1, Register v2) {
  const Register two = blendBytes(v0, v1, allGroups(kChannelMasks<T>.bytes[1][c]));
  const Register all = blendBytes(two, v2, allGroups(kChannelMasks<T>.bytes[2][c]));
  return as<Vec<T>>(permute(all, kChannelOrder<T>.bytes[c]));
}

// The first groups hold the first of the triples.
template <class T>
VISTREL_INLINE Channels<T> loadChannels(const uint8_t* p) {
  const Register v0 = loadGroups(p, 3 * kSpan), v1 = loadGroups(p + kSpan, 3 * kSpan),
                 v2 = loadGroups(p + 2 * kSpan, 3 * kSpan);
  return {channel<T, 0>(v0, v1, v2), channel<T, 1>(v0, v1, v2), channel<T, 2>(v0, v1, v2)};
}

#endif

#elif VISTREL_NEON

template <class T>
VISTREL_INLINE Channels<T> loadChannels(const uint8_t* p) {
  if constexpr (sizeof(T) == 1) {
    const uint8x16x3_t v = vld3q_u8(p);
    return {as<Vec<T>>(v.val[0]), as<Vec<T>>(v.val[1]), as<Vec<T>>(v.val[2])};
  } else {
    const uint16x8x3_t v = vld3q_u16(reinterpret_cast<const uint16_t*>(p));
    return {as<Vec<T>>(v.val[0]), as<Vec<T>>(v.val[1]), as<Vec<T>>(v.val[2])};
  }
}

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
