// BT.709 luma and chroma in limited range. pixels.h states the formulas.
#if defined(VISTREL_BT709_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_BT709_INL_H
#undef VISTREL_BT709_INL_H
#else
#define VISTREL_BT709_INL_H
#endif

#include "common/simd/deinterleave-inl.h"
#include "common/simd/pairs-inl.h"
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Black and the rounding half of luma, in units of 17/4096 of a code.
constexpr int kLumaOffset = 3966, kLumaFactor = 17;

// Chroma in 32768ths, from differences to green, in 128ths; in 128ths: gray and the half that
// rounds.
constexpr int16_t kCbBlue = 14392, kCbRed = -3298, kCrRed = 14392, kCrBlue = -1320;
constexpr int16_t kChromaOffset = 128 * 128 + 64;

#if VISTREL_SSSE3

// From pairs (blue, green) and (red, green): each holds half of green's weight.
VISTREL_INLINE Vec<uint16_t> luma709(Vec<uint8_t> blueGreen, Vec<uint8_t> redGreen) {
  const auto sum = weighted<15, 74>(blueGreen) + weighted<44, 74>(redGreen) + kLumaOffset;
  return upperProduct(sum, kLumaFactor << 4);
}

VISTREL_INLINE Vec<uint8_t> luma709(const Channels<uint8_t>& bgr) {
  const Pairs<uint8_t> blueGreen = pairsOf(bgr.first, bgr.second);
  const Pairs<uint8_t> redGreen = pairsOf(bgr.third, bgr.second);
  return packed(luma709(blueGreen.lower, redGreen.lower), luma709(blueGreen.upper, redGreen.upper));
}

struct Chroma {
  Vec<int16_t> cb, cr;
};

// The means of the blocks, times 128.
VISTREL_INLINE Vec<int16_t> blockSums(Vec<uint8_t> upper, Vec<uint8_t> lower) {
  return as<Vec<int16_t>>(weighted<32, 32>(upper) + weighted<32, 32>(lower));
}

VISTREL_INLINE Chroma chroma(const uint8_t* const (&rows)[2]) {
  const auto upper = loadChannels<uint8_t>(rows[0]), lower = loadChannels<uint8_t>(rows[1]);
  const Vec<int16_t> green = blockSums(upper.second, lower.second);
  const Vec<int16_t> blue = blockSums(upper.first, lower.first) - green;
  const Vec<int16_t> red = blockSums(upper.third, lower.third) - green;
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

inline int roundedProduct(int v, int w) { return (v * w + 16384) >> 15; }

VISTREL_INLINE Chroma chroma(const uint8_t* const (&rows)[2]) {
  const auto blockSum = [&](int c) {
    return 32 * (rows[0][c] + rows[0][c + 3] + rows[1][c] + rows[1][c + 3]);
  };
  const int green = blockSum(1), blue = blockSum(0) - green, red = blockSum(2) - green;
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

struct Luma709 {
  static constexpr size_t kSources = 1, kResults = 1;
  static constexpr size_t kSourceBytes = 3, kResultBytes = 1;

#if VISTREL_SSSE3
  static constexpr size_t kUnits = kLanes<uint8_t>;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[1]) {
    store(to[0], luma709(loadChannels<uint8_t>(from[0])));
  }
#else
  static constexpr size_t kUnits = 1;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[1]) {
    const uint8_t* bgr = from[0];
    const int sum = 15 * bgr[0] + 148 * bgr[1] + 44 * bgr[2] + kLumaOffset;
    to[0][0] = static_cast<uint8_t>((kLumaFactor * sum) >> 12);
  }
#endif
};

// A unit is a block of 2x2 pixels.
template <size_t results>
struct Chroma709 {
  static constexpr size_t kSources = 2, kResults = results;
  static constexpr size_t kSourceBytes = 6, kResultBytes = 2 / results;
#if VISTREL_SSSE3
  static constexpr size_t kUnits = kLanes<uint8_t> / 2;
#else
  static constexpr size_t kUnits = 1;
#endif
  VISTREL_INLINE static void convert(const uint8_t* const (&rows)[2],
                                     uint8_t* const (&to)[results]) {
    if constexpr (results == 1)
      storePairs(chroma(rows), to[0]);
    else
      storePlanes(chroma(rows), to[0], to[1]);
  }
};
using ChromaPairs = Chroma709<1>;
using ChromaPlanes = Chroma709<2>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
