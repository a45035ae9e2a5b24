// Adds an alpha of 255 after or before three bytes.
#if defined(VISTREL_ALPHA_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_ALPHA_INL_H
#undef VISTREL_ALPHA_INL_H
#else
#define VISTREL_ALPHA_INL_H
#endif

#include "common/simd/registers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_GROUPS

// The source of each byte of the results; alpha has none. Unless a permutation reaches the whole
// source, each group of 16 bytes has its own source, kApart bytes after the previous one. The
// second of two begins with a pixel that it doesn't use, so that it doesn't read too far.
#if VISTREL_AVX512
constexpr int kAlphaPixels = 16, kApart = 0;
#else
constexpr int kAlphaPixels = 8, kApart = 8;
#endif
template <int alphaAt>
struct AlphaOrder {
  alignas(64) uint8_t bytes[4 * kAlphaPixels];
  constexpr AlphaOrder() : bytes() {
    for (int i = 0; i < 4 * kAlphaPixels; ++i)
      bytes[i] = static_cast<uint8_t>(
          i % 4 == alphaAt ? 0x80 : 3 * (i / 4) + i % 4 - (alphaAt == 0) - kApart * (i / 16));
  }
};
template <int alphaAt>
constexpr AlphaOrder<alphaAt> kAlphaOrder;

#elif VISTREL_NEON

constexpr int kAlphaPixels = 16;

#endif

template <int alphaAt>
struct WithAlpha {
  static constexpr size_t kSources = 1, kResults = 1;
  static constexpr size_t kSourceBytes = 3, kResultBytes = 4;

#if VISTREL_PERMUTES
  static constexpr size_t kUnits = kAlphaPixels;
#else
  static constexpr size_t kUnits = 1;
#endif

  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[1]) {
#if VISTREL_AVX512
    constexpr __mmask64 colours = ~(uint64_t{0x1111111111111111} << alphaAt);
    const __m512i v = _mm512_maskz_loadu_epi8((uint64_t{1} << 48) - 1, from[0]);
    const __m512i order = _mm512_load_si512(kAlphaOrder<alphaAt>.bytes);
    const __m512i alpha = _mm512_set1_epi8(-1);
    _mm512_storeu_si512(to[0], _mm512_mask_permutexvar_epi8(alpha, colours, order, v));
#elif VISTREL_GROUPS
    const Register alpha = VISTREL_OP(set1_epi32)(static_cast<int>(0xFFu << (8 * alphaAt)));
    for (int g = 0; g < 2; g += kGroups) {
      const Register v = loadGroups(from[0] + kApart * g, kApart);
      const Register order = loadRegister(kAlphaOrder<alphaAt>.bytes + 16 * g);
      storeRegister(to[0] + 16 * g, VISTREL_OP(shuffle_epi8)(v, order) | alpha);
    }
#elif VISTREL_NEON
    const uint8x16x3_t v = vld3q_u8(from[0]);
    const uint8x16_t alpha = vdupq_n_u8(255);
    if constexpr (alphaAt == 0)
      vst4q_u8(to[0], {{alpha, v.val[0], v.val[1], v.val[2]}});
    else
      vst4q_u8(to[0], {{v.val[0], v.val[1], v.val[2], alpha}});
#else
    std::memcpy(to[0] + (alphaAt == 0), from[0], 3);
    to[0][alphaAt] = 255;
#endif
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
