// Rec. 601 luma, rounded: (114 * blue + 587 * green + 299 * red + 500) / 1000.
//
// The division by 8 comes first: 14 * blue + 73 * green + 37 * red is the integer part, and an
// eighth of 2 * blue + 3 * green + 3 * red + 500 is added. The division by 125 remains.
#if defined(VISTREL_LUMA_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_LUMA_INL_H
#undef VISTREL_LUMA_INL_H
#else
#define VISTREL_LUMA_INL_H
#endif

#include "common/simd/deinterleave-inl.h"
#include "common/simd/pairs-inl.h"
#include "common/simd/products-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

// From bytes in pairs (blue, green) and (red, 250).
VISTREL_INLINE Vec<uint16_t> luma(const auto& blueGreen, const auto& redConstant) {
  const auto eighths = weighted<2, 3>(blueGreen) + weighted<3, 2>(redConstant);
  const auto sum = weighted<14, 73>(blueGreen) + weighted<37, 0>(redConstant) + (eighths >> 3);
  return upperProduct(sum, 33555) >> 6;  // a division by 125, exact for sums below 59000
}

VISTREL_INLINE Vec<uint8_t> luma(const Channels<uint8_t>& bgr) {
  const Pairs<uint8_t> blueGreen = pairsOf(bgr.first, bgr.second);
  const Pairs<uint8_t> redConstant = pairsOf(bgr.third, Vec<uint8_t>{} + uint8_t{250});
  return narrowed(luma(blueGreen.lower, redConstant.lower),
                  luma(blueGreen.upper, redConstant.upper));
}

// From 16-bit samples minus 32768, in pairs (blue, green) and (red, anything); 32768 is subtracted
// from the result too. An eighth of the sum is below 2^23, so a float holds it. 0.008f is slightly
// too large, but by less than the distance of any fraction to the next integer, so the quotient is
// exact.
VISTREL_INLINE Vec<int32_t> luma(Vec<int16_t> blueGreen, Vec<int16_t> redAnything) {
  constexpr int offset = 32768 * 1000;
  const auto sum = weighted<114, 587>(blueGreen) + weighted<299, 0>(redAnything) + (offset + 500);
  const auto quotient = __builtin_convertvector(sum >> 3, Vec<float>) * 0.008f;
  return __builtin_convertvector(quotient, Vec<int32_t>) - 32768;
}

VISTREL_INLINE Vec<uint16_t> luma(const Channels<uint16_t>& bgr) {
  using Signed = Vec<int16_t>;
  constexpr uint16_t half = 32768;
  const auto red = bgr.third ^ half;
  const Pairs<uint16_t> blueGreen = pairsOf(bgr.first ^ half, bgr.second ^ half);
  const Pairs<uint16_t> redTwice = pairsOf(red, red);
  return narrowed(luma(as<Signed>(blueGreen.lower), as<Signed>(redTwice.lower)),
                  luma(as<Signed>(blueGreen.upper), as<Signed>(redTwice.upper))) ^
         half;
}

#endif

template <class T>
struct Luma {
  static constexpr size_t kSources = 1, kResults = 1;
  static constexpr size_t kSourceBytes = 3 * sizeof(T), kResultBytes = sizeof(T);

#if VISTREL_PERMUTES
  static constexpr size_t kUnits = kLanes<T>;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[1]) {
    const Vec<T> result = luma(loadChannels<T>(from[0]));
    std::memcpy(to[0], &result, sizeof result);
  }
#else
  static constexpr size_t kUnits = 1;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[1]) {
    T p[3];
    std::memcpy(p, from[0], sizeof p);
    const T result = static_cast<T>((114u * p[0] + 587u * p[1] + 299u * p[2] + 500) / 1000);
    std::memcpy(to[0], &result, sizeof result);
  }
#endif
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
