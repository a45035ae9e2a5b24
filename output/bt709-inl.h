// BT.709 luma and chroma in limited range. pixels.h states the formulas.
#if defined(VISTREL_BT709_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_BT709_INL_H
#undef VISTREL_BT709_INL_H
#else
#define VISTREL_BT709_INL_H
#endif

#include "common/simd/deinterleave-inl.h"
#include "common/simd/pairs-inl.h"
#include "common/simd/products-inl.h"
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Black and the rounding half of luma, in units of 17/4096 of a code.
constexpr int kLumaOffset = 3966, kLumaFactor = 17;

// Chroma in 32768ths, from differences to green, in 128ths; in 128ths: gray and the half that
// rounds.
constexpr int16_t kCbBlue = 14392, kCbRed = -3298, kCrRed = 14392, kCrBlue = -1320;
constexpr int16_t kChromaOffset = 128 * 128 + 64;

#if VISTREL_PERMUTES

// From pairs (blue, green) and (red, green): each holds half of green's weight.
VISTREL_INLINE Vec<uint16_t> luma709(const auto& blueGreen, const auto& redGreen) {
  const auto sum = weighted<15, 74>(blueGreen) + weighted<44, 74>(redGreen) + kLumaOffset;
  return upperProduct(sum, kLumaFactor << 4);
}

VISTREL_INLINE Vec<uint8_t> luma709(const Channels<uint8_t>& bgr) {
  const Pairs<uint8_t> blueGreen = pairsOf(bgr.first, bgr.second);
  const Pairs<uint8_t> redGreen = pairsOf(bgr.third, bgr.second);
  return narrowed(luma709(blueGreen.lower, redGreen.lower),
                  luma709(blueGreen.upper, redGreen.upper));
}

// 32 times the sums of pairs.
VISTREL_INLINE Vec<int16_t> pairSums(const auto& pairs) {
  return as<Vec<int16_t>>(weighted<32, 32>(pairs));
}

struct Chroma {
  Vec<int16_t> cb, cr;
};

VISTREL_INLINE Chroma chroma(Vec<int16_t> blue, Vec<int16_t> red) {
  return {(roundedProduct(blue, kCbBlue) + roundedProduct(red, kCbRed) + kChromaOffset) >> 7,
          (roundedProduct(red, kCrRed) + roundedProduct(blue, kCrBlue) + kChromaOffset) >> 7};
}

VISTREL_INLINE void storePairs(const Chroma& c, uint8_t* cbcr) {
  const auto result = c.cb | c.cr << 8;
  std::memcpy(cbcr, &result, sizeof result);
}

VISTREL_INLINE void storePlanes(const Chroma& c, uint8_t* cb, uint8_t* cr) {
  const Vec<uint8_t> both = LowHigh<uint8_t>::join({c.cb, c.cr});
  std::memcpy(cb, &both, sizeof both / 2);
  std::memcpy(cr, reinterpret_cast<const uint8_t*>(&both) + sizeof both / 2, sizeof both / 2);
}

#else

struct Chroma {
  uint8_t cb, cr;
};

inline uint8_t luma709(const uint8_t* bgr) {
  return static_cast<uint8_t>(
      (kLumaFactor * (15 * bgr[0] + 148 * bgr[1] + 44 * bgr[2] + kLumaOffset)) >> 12);
}

inline int roundedProduct(int v, int w) { return (v * w + 16384) >> 15; }

inline Chroma chroma(int blue, int red) {
  const int cb = roundedProduct(blue, kCbBlue) + roundedProduct(red, kCbRed) + kChromaOffset;
  const int cr = roundedProduct(red, kCrRed) + roundedProduct(blue, kCrBlue) + kChromaOffset;
  return {static_cast<uint8_t>(cb >> 7), static_cast<uint8_t>(cr >> 7)};
}

VISTREL_INLINE void storePairs(const Chroma& c, uint8_t* cbcr) {
  cbcr[0] = c.cb;
  cbcr[1] = c.cr;
}

VISTREL_INLINE void storePlanes(const Chroma& c, uint8_t* cb, uint8_t* cr) {
  *cb = c.cb;
  *cr = c.cr;
}

#endif

// A unit is a pixel. The results are luma and chroma of its own.
struct Planes709 {
  static constexpr size_t kSources = 1, kResults = 3;
  static constexpr size_t kSourceBytes = 3, kResultBytes = 1;

#if VISTREL_PERMUTES
  static constexpr size_t kUnits = kLanes<uint8_t>;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[3]) {
    const Channels<uint8_t> bgr = loadChannels<uint8_t>(from[0]);
    const Pairs<uint8_t> blue = pairsOf(bgr.first, bgr.second);
    const Pairs<uint8_t> red = pairsOf(bgr.third, bgr.second);
    const Chroma lower = chroma(difference(blue.lower), difference(red.lower));
    const Chroma upper = chroma(difference(blue.upper), difference(red.upper));
    const Vec<uint8_t> results[3] = {luma709(bgr), codes(lower.cb, upper.cb),
                                     codes(lower.cr, upper.cr)};
    for (size_t i = 0; i < 3; ++i) std::memcpy(to[i], &results[i], sizeof results[i]);
  }

 private:
  // 128 times the first sample of each pair less the second.
  VISTREL_INLINE static Vec<int16_t> difference(const auto& pairs) {
    const auto half = as<Vec<int16_t>>(weighted<64, -64>(pairs));
    return half + half;
  }
  VISTREL_INLINE static Vec<uint8_t> codes(Vec<int16_t> lower, Vec<int16_t> upper) {
    return narrowed(as<Vec<uint16_t>>(lower), as<Vec<uint16_t>>(upper));
  }
#else
  static constexpr size_t kUnits = 1;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[3]) {
    const uint8_t* p = from[0];
    *to[0] = luma709(p);
    storePlanes(chroma(128 * (p[0] - p[1]), 128 * (p[2] - p[1])), to[1], to[2]);
  }
#endif
};

// A unit is a pair of pixels. The results are luma, and the sums of blue and of red.
struct PairOf709 {
  static constexpr size_t kSources = 1, kResults = 3;
  static constexpr size_t kSourceBytes = 6, kResultBytes = 2;

#if VISTREL_PERMUTES
  static constexpr size_t kUnits = kLanes<uint8_t> / 2;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[3]) {
    const Channels<uint8_t> bgr = loadChannels<uint8_t>(from[0]);
    const Vec<uint8_t> luma = luma709(bgr);
    const Vec<int16_t> green = pairSums(bgr.second);
    const Vec<int16_t> blue = pairSums(bgr.first) - green, red = pairSums(bgr.third) - green;
    std::memcpy(to[0], &luma, sizeof luma);
    std::memcpy(to[1], &blue, sizeof blue);
    std::memcpy(to[2], &red, sizeof red);
  }
#else
  static constexpr size_t kUnits = 1;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[3]) {
    const uint8_t* p = from[0];
    for (size_t i = 0; i < 2; ++i) to[0][i] = luma709(p + 3 * i);
    const int green = p[1] + p[4];
    const auto blue = static_cast<int16_t>(32 * (p[0] + p[3] - green));
    const auto red = static_cast<int16_t>(32 * (p[2] + p[5] - green));
    std::memcpy(to[1], &blue, sizeof blue);
    std::memcpy(to[2], &red, sizeof red);
  }
#endif
};

// A unit is a block of 2x2 pixels. The sources are sums of blue and of red, of both rows each.
template <size_t results>
struct Chroma709 {
  static constexpr size_t kSources = 4, kResults = results;
  static constexpr size_t kSourceBytes = 2, kResultBytes = 2 / results;
#if VISTREL_PERMUTES
  using Sum = Vec<int16_t>;
#else
  using Sum = int16_t;
#endif
  static constexpr size_t kUnits = sizeof(Sum) / sizeof(int16_t);

  VISTREL_INLINE static Sum load(const uint8_t* from) {
    Sum sum;
    std::memcpy(&sum, from, sizeof sum);
    return sum;
  }
  VISTREL_INLINE static void convert(const uint8_t* const (&sums)[4],
                                     uint8_t* const (&to)[results]) {
    const Chroma c = chroma(load(sums[0]) + load(sums[1]), load(sums[2]) + load(sums[3]));
    if constexpr (results == 1)
      storePairs(c, to[0]);
    else
      storePlanes(c, to[0], to[1]);
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
