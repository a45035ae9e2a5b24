// Near neighbours: how the primitive is called, and the compact image that remains.
#include "tests/demosaic/compact.h"
#include "tests/levels.h"
#include "vistrel/image_functions.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;

VISTREL_LEVEL_SUITE(Near);

constexpr auto byNear = [](auto... arguments) { ImageColorNearNeighbor(arguments...); };

TEST_P(Near, HasBlueFirstInEveryPhase) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer) {
    expectPlain(compact(byNear, plainColours<uint8_t>(nBayer, 37, 14), nBayer, {0, 0, 37, 14}));
    for (uint32_t bits : {8u, 10u, 12u, 16u})
      expectPlain(
          compact(byNear, plainColours<uint16_t>(nBayer, 37, 14), nBayer, {0, 0, 37, 14}, bits));
  }
}

// At sixteen bits, (1 + 2 + 1) >> 1 is 2. Ten-bit samples are scaled up by 64: (64 + 128 + 1) >> 1
// is truncated when it is scaled back.
TEST_P(Near, RoundsAtTheScaleOfSixteenBits) {
  Frame<uint16_t> frame(24, 8, 0);
  for (uint32_t x = 0; x < 24; x += 4) {
    frame.at(x, 3) = 1;  // left and right of the green sites of this row
    frame.at(x + 2, 3) = 2;
  }
  const auto blueAt = [&](uint32_t x, uint32_t bits) {
    return compact(byNear, frame, BAYER_GRBG, {0, 0, 24, 8}, bits).at(3 * (3 * 24 + x));
  };
  for (uint32_t x : {1u, 9u, 21u}) {
    EXPECT_EQ(blueAt(x, 16), 2);
    EXPECT_EQ(blueAt(x, 10), 1);
  }
}

// 16-bit samples pass unchanged.
TEST_P(Near, OfSixteenBitsKeepsEverySensedBit) {
  Frame<uint16_t> frame(20, 10, 0);
  frame.samples = noise<uint16_t>(frame.samples.size(), 65535, 1);
  const auto image = compact(byNear, frame, BAYER_GRBG, {0, 0, 20, 10}, 16);
  for (uint32_t y = 0; y < 10; ++y)
    for (uint32_t x = y & 1; x < 20; x += 2)
      EXPECT_EQ(image.at(3 * (20 * y + x) + 1), frame.at(x, y));  // green
}

// Rows 2 to 5 of the source come first; no others follow.
// quirk: rows-below-origin
TEST_P(Near, ARegionsFirstRowLeavesFewerRows) {
  Frame<uint8_t> frame = plainColours<uint8_t>(BAYER_RGGB, 24, 6);
  const auto image = compact(byNear, frame, BAYER_RGGB, {0, 2, 24, 6});
  const auto stale = image.begin() + 24 * 4 * 3;
  expectPlain(std::vector<uint8_t>(image.begin(), stale));
  EXPECT_THAT(std::vector<uint8_t>(stale, image.end()), Each(kBefore));
  frame.at(8, 2) = 255;  // red
  EXPECT_EQ(compact(byNear, frame, BAYER_RGGB, {0, 2, 24, 6}).at(3 * 8 + 2), 255);
}

TEST_P(Near, AFirstRowPastTheRegionsHeightConvertsNothing) {
  for (uint32_t y : {6u, 7u})
    EXPECT_THAT(
        compact(byNear, plainColours<uint8_t>(BAYER_RGGB, 24, 6), BAYER_RGGB, {0, y, 24, 6}),
        Each(kBefore));
}

// The phase is that of the frame's first column.
TEST_P(Near, ARegionsFirstColumnIsOneOfTheFrames) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer)
    for (uint32_t x : {1u, 2u, 7u}) {
      expectPlain(compact(byNear, plainColours<uint8_t>(nBayer, 30, 9), nBayer, {x, 0, 20, 9}));
      expectPlain(
          compact(byNear, plainColours<uint16_t>(nBayer, 30, 9), nBayer, {x, 0, 20, 9}, 12));
    }
}

TEST_P(Near, SmallFramesShowWhatTheWorkBufferHeld) {
  EXPECT_THAT(compact(byNear, plainColours<uint8_t>(BAYER_GRBG, 8, 1), BAYER_GRBG, {0, 0, 8, 1}),
              Each(kBefore));
  EXPECT_THAT(compact(byNear, plainColours<uint8_t>(BAYER_GRBG, 1, 8), BAYER_GRBG, {0, 0, 1, 8}),
              Each(kBefore));
  expectPlain(compact(byNear, plainColours<uint8_t>(BAYER_GRBG, 2, 2), BAYER_GRBG, {0, 0, 2, 2}));
}

}  // namespace
}  // namespace vistrel::core::test
