// AHD has no code in the library: the result is that of its primitive for the region, blue first.
#include <gtest/gtest.h>

#include "tests/host/frames.h"
#include "vistrel/cfa.h"

namespace vistrel {
namespace {

constexpr uint32_t kWidth = 37, kHeight = 29;
constexpr vistrel_region kRegion{5, 4, 24, 19};
constexpr CfaSize kSize{24, 19};

uint32_t texture(uint32_t x, uint32_t y) { return x * x * 3 + y * 7 * x + (x ^ y) * 29; }

// By the frame's phase, GRBG, BGGR, RGGB, GBRG: the grid of the region, which begins in an odd
// column, with red and blue exchanged, so that the primitive writes blue first.
constexpr int32_t kGrids[] = {CFA_GRID_BGGR, CFA_GRID_GRBG, CFA_GRID_GBRG, CFA_GRID_RGGB};

TEST(Ahd, IsThePrimitiveOfTheRegionInBytes) {
  const auto samples =
      samplesOf<uint8_t>(kWidth, kHeight, [](auto x, auto y) { return texture(x, y) % 256; });
  const auto cut = samplesOf<uint8_t>(kRegion.width, kRegion.height, [](auto x, auto y) {
    return texture(x + kRegion.x, y + kRegion.y) % 256;
  });
  Bytes bgr(3 * cut.size());
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const vistrel_frame frame = frameOf(samples, kWidth, kHeight, phase);
    vistrel_conversion c = defaultConversion(frame);
    c.algorithm = VISTREL_AHD;
    c.region = kRegion;
    ASSERT_EQ(ippiDemosaicAHD_8u_C1C3R(cut.data(), {0, 0, 24, 19}, kSize, 24, bgr.data(), 72,
                                       kGrids[phase], nullptr, 0),
              CFA_OK);
    EXPECT_EQ(convert(frame, c).pixels, bgr) << phase;
  }
}

TEST(Ahd, IsThePrimitiveOfSamplesScaledTo16Bits) {
  constexpr uint32_t kBits = 13;
  const auto samples =
      samplesOf<uint16_t>(kWidth, kHeight, [](auto x, auto y) { return texture(x, y) % 8192; });
  const auto cut = samplesOf<uint16_t>(kRegion.width, kRegion.height, [](auto x, auto y) {
    return texture(x + kRegion.x, y + kRegion.y) % 8192 << (16 - kBits);
  });
  std::vector<uint16_t> bgr(3 * cut.size());
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const vistrel_frame frame = frameOf(samples, kWidth, kHeight, kBits, phase);
    vistrel_conversion c = defaultConversion(frame);
    c.algorithm = VISTREL_AHD;
    c.region = kRegion;
    ASSERT_EQ(ippiDemosaicAHD_16u_C1C3R(cut.data(), {0, 0, 24, 19}, kSize, 48, bgr.data(), 144,
                                        kGrids[phase], nullptr, 0),
              CFA_OK);
    Bytes expected;
    for (const uint16_t s : bgr) expected.push_back(static_cast<uint8_t>(s >> 8));
    EXPECT_EQ(convert(frame, c).pixels, expected) << phase;
  }
}

}  // namespace
}  // namespace vistrel
