// The homogeneity-directed function: how the primitive is called, and the compact image that
// remains.
#include "tests/demosaic/compact.h"
#include "tests/levels.h"
#include "vistrel/image_functions.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;

VISTREL_LEVEL_SUITE(AhdImage);

constexpr auto ahd = [](auto... arguments) { ImageColorDemosaicAHD(arguments...); };

TEST_P(AhdImage, HasBlueFirstInEveryPhase) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer) {
    expectPlain(compact(ahd, plainColours<uint8_t>(nBayer, 37, 14), nBayer, {0, 0, 37, 14}));
    for (uint32_t bits : {8u, 10u, 12u, 16u})
      expectPlain(
          compact(ahd, plainColours<uint16_t>(nBayer, 37, 14), nBayer, {0, 0, 37, 14}, bits));
  }
}

// 16-bit samples pass unchanged.
TEST_P(AhdImage, OfSixteenBitsKeepsEverySensedBit) {
  Frame<uint16_t> frame(20, 10, 0);
  frame.samples = noise<uint16_t>(frame.samples.size(), 65535, 1);
  const auto image = compact(ahd, frame, BAYER_GRBG, {0, 0, 20, 10}, 16);
  for (uint32_t y = 0; y < 10; ++y)
    for (uint32_t x = y & 1; x < 20; x += 2)
      EXPECT_EQ(image.at(3 * (20 * y + x) + 1), frame.at(x, y));  // green
}

// Rows 2 to 5 of the source come first; no others follow.
// quirk: rows-below-origin
TEST_P(AhdImage, ARegionsFirstRowLeavesFewerRows) {
  Frame<uint8_t> frame = plainColours<uint8_t>(BAYER_RGGB, 24, 6);
  const auto image = compact(ahd, frame, BAYER_RGGB, {0, 2, 24, 6});
  const auto stale = image.begin() + 24 * 4 * 3;
  expectPlain(std::vector<uint8_t>(image.begin(), stale));
  EXPECT_THAT(std::vector<uint8_t>(stale, image.end()), Each(kBefore));
  frame.at(8, 2) = 255;  // red
  EXPECT_EQ(compact(ahd, frame, BAYER_RGGB, {0, 2, 24, 6}).at(3 * 8 + 2), 255);
}

TEST_P(AhdImage, AFirstRowPastTheRegionsHeightConvertsNothing) {
  for (uint32_t y : {6u, 7u})
    EXPECT_THAT(compact(ahd, plainColours<uint8_t>(BAYER_RGGB, 24, 6), BAYER_RGGB, {0, y, 24, 6}),
                Each(kBefore));
}

// The phase is that of the frame's first column.
TEST_P(AhdImage, ARegionsFirstColumnIsOneOfTheFrames) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer)
    for (uint32_t x : {1u, 2u, 7u}) {
      expectPlain(compact(ahd, plainColours<uint8_t>(nBayer, 30, 9), nBayer, {x, 0, 20, 9}));
      expectPlain(compact(ahd, plainColours<uint16_t>(nBayer, 30, 9), nBayer, {x, 0, 20, 9}, 12));
    }
}

TEST_P(AhdImage, SmallFramesShowWhatTheWorkBufferHeld) {
  EXPECT_THAT(compact(ahd, plainColours<uint8_t>(BAYER_GRBG, 8, 4), BAYER_GRBG, {0, 0, 8, 4}),
              Each(kBefore));
  EXPECT_THAT(compact(ahd, plainColours<uint8_t>(BAYER_GRBG, 4, 8), BAYER_GRBG, {0, 0, 4, 8}),
              Each(kBefore));
  expectPlain(compact(ahd, plainColours<uint8_t>(BAYER_GRBG, 5, 5), BAYER_GRBG, {0, 0, 5, 5}));
  // The frame counts, not the region.
  expectPlain(compact(ahd, plainColours<uint8_t>(BAYER_GRBG, 8, 5), BAYER_GRBG, {3, 0, 1, 5}));
}

}  // namespace
}  // namespace vistrel::core::test
