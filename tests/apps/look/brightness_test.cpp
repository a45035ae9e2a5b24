// Brightness of blocks, worked out by hand.
#include "apps/look/brightness.h"

#include <gtest/gtest.h>

namespace vistrel::app {
namespace {

// Light has 4096 levels, evenly spaced in its root: no step is wider than this.
constexpr double kStep = 2 / 4095.0;

const CurveSketch kLinear({Curve::kLinear, 0});

Look lookOf(const Gains& gains) {
  Look look;
  look.gains = gains;
  return look;
}

TEST(BrightnessOf, IsTheMeanOfWeightedColours) {
  // Gains of 2, 1, 3/2. Colours 0.72, 0.64, 0.96.
  const std::vector<Block> blocks = {{{0.36f, 0.64f, 0.64f}, false}, {{0, 0, 0}, false}};
  const Brightness brightness(blocks, lookOf({8192, 4096, 6144}));
  const double mean = (0.2126 * 0.72 + 0.7152 * 0.64 + 0.0722 * 0.96) / 2;
  EXPECT_NEAR(brightness.mean(1, kLinear), mean, kStep);
  EXPECT_NEAR(brightness.mean(0.5, kLinear), mean / 2, kStep / 2);
  EXPECT_EQ(brightness.mean(2, kLinear), 0.5);  // all colours of the first block exceed 1
  EXPECT_NEAR(brightness.highlight(0.9), 0.96, 2 * kStep);
  EXPECT_EQ(brightness.neutralClip(), 1);
}

TEST(BrightnessOf, AppliesTheMatrix) {
  Look look;
  look.matrix = {0, 4096, 0, 4096, 0, 0, 0, 0, 2048};
  const std::vector<Block> blocks = {{{0.25f, 0.5f, 0.8f}, false}};
  EXPECT_NEAR(Brightness(blocks, look).mean(1, kLinear),
              0.2126 * 0.5 + 0.7152 * 0.25 + 0.0722 * 0.4, kStep / 2);
}

TEST(BrightnessOf, ClippedBlocksAreNeutral) {
  const std::vector<Block> blocks = {{{1, 1, 1}, true}, {{0.1f, 0.1f, 0.1f}, false}};
  Look look = lookOf({8192, 4096, 4096});
  const Brightness neutral(blocks, look);
  EXPECT_EQ(neutral.clipped(), 0.5);
  const double other = 0.2126 * 0.2 + 0.7874 * 0.1;
  EXPECT_NEAR(neutral.mean(0.5, kLinear), (0.5 + other / 2) / 2, kStep / 2);
  look.neutralHighlights = false;
  EXPECT_NEAR(Brightness(blocks, look).mean(0.5, kLinear), (0.2126 + 0.7874 / 2 + other / 2) / 2,
              kStep / 2);
}

TEST(BrightnessOf, TheMedianIsThatOfLuminance) {
  const std::vector<Block> blocks = {
      {{0, 0, 0}, false}, {{0.2f, 0.2f, 0.2f}, false}, {{1, 1, 1}, false}};
  EXPECT_NEAR(Brightness(blocks, Look{}).median(), 0.2, kStep);
}

TEST(BrightnessOf, NothingIsBlack) {
  const Brightness none({}, Look{});
  EXPECT_EQ(none.mean(1, kLinear), 0);
  EXPECT_EQ(none.highlight(0.5), 0);
  EXPECT_EQ(none.median(), 0);
  EXPECT_EQ(none.clipped(), 0);
}

}  // namespace
}  // namespace vistrel::app
