// BT.709 luma and chroma in limited range, by the formulas in pixels.h.
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

// Luma in 65536ths of a code per code of the sample, and in 256ths: black, the half that rounds,
// and one for the three products that are truncated.
constexpr uint16_t kLumaBlue = 4064, kLumaGreen = 40254, kLumaRed = 11966;
constexpr uint16_t kLumaOffset = 16 * 256 + 128 + 1;

// Chroma in 32768ths, from differences to green, in 128ths; in 128ths: gray and the half that
// rounds.
constexpr int16_t kCbBlue = 14392, kCbRed = -3298, kCrRed = 14392, kCrBlue = -1320;
constexpr int16_t kChromaOffset = 128 * 128 + 64;

#if VISTREL_SSSE3

// Of bytes times 256.
VISTREL_INLINE Vec<uint16_t> luma709(Vec<uint8_t> blue, Vec<uint8_t> green, Vec<uint8_t> red) {
  const auto sum = upperProduct(as<Vec<uint16_t>>(blue), kLumaBlue) +
                   upperProduct(as<Vec<uint16_t>>(green), kLumaGreen) +
                   upperProduct(as<Vec<uint16_t>>(red), kLumaRed);
  return (sum + kLumaOffset) >> 8;
}

VISTREL_INLINE Vec<uint8_t> luma709(const Channels<uint8_t>& bgr) {
  const Vec<uint8_t> zero{};
  const Pairs<uint8_t> blue = pairsOf(zero, bgr.first), green = pairsOf(zero, bgr.second),
                       red = pairsOf(zero, bgr.third);
  return packed(luma709(blue.lower, green.lower, red.lower),
                luma709(blue.upper, green.upper, red.upper));
}

struct Chroma {
  Vec<int16_t> cb, cr;
};

// 128 times the mean of each block.
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
    to[0][0] = static_cast<uint8_t>((kLumaOffset + (kLumaBlue * bgr[0] >> 8) +
                                     (kLumaGreen * bgr[1] >> 8) + (kLumaRed * bgr[2] >> 8)) >>
                                    8);
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
