// White balance of blocks whose neutral is known.
#include "apps/look/neutral.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/apps/look/frame.h"

namespace vistrel::app {
namespace {

using Neutral = std::array<double, 3>;

// Half of the blocks are gray, the others have colours at random, under a light in which gray is
// `neutral`.
std::vector<Block> surfaces(const Neutral& neutral, double noise = 0) {
  Noise random;
  std::vector<Block> blocks;
  for (int i = 0; i < 20'000; ++i) {
    const double lightness = (20 + random.below(600)) / 1000.0;
    Block block{};
    for (size_t c = 0; c < 3; ++c) {
      const double reflectance = i % 2 ? 1 : (10 + random.below(90)) / 100.0;
      block.colour[c] =
          static_cast<float>(lightness * reflectance * neutral[c] + noise * random.normal());
    }
    blocks.push_back(block);
  }
  return blocks;
}

// The largest error of the gains' ratios, 0.1 for a tenth.
double errorOf(const Gains& gains, const Neutral& neutral) {
  const double red = gains[0] * neutral[0] / (gains[1] * neutral[1]);
  const double blue = gains[2] * neutral[2] / (gains[1] * neutral[1]);
  return std::max(std::abs(red - 1), std::abs(blue - 1));
}

constexpr Neutral kLights[] = {
    {0.45, 1, 0.6}, {0.5, 1, 0.7}, {0.62, 1, 0.85}, {0.7, 1, 0.45}, {1, 1, 1}};

TEST(Neutral, GrayBecomesGray) {
  for (const Neutral& light : kLights)
    EXPECT_LT(errorOf(gainsOf(surfaces(light), 0.001), light), 0.06) << light[0];
}

TEST(Neutral, SurvivesNoise) {
  for (const Neutral& light : kLights)
    EXPECT_LT(errorOf(gainsOf(surfaces(light, 0.01), 0.001), light), 0.08) << light[0];
}

TEST(Neutral, AFieldOfOneColourIsNotTakenForGray) {
  const Neutral light = {0.48, 1, 0.62};
  std::vector<Block> blocks(1000, Block{{0.48f * 0.3f, 0.4f, 0.62f * 0.1f}, false});
  const Gains gains = gainsOf(blocks, 0.001);
  // A gray-world estimate would be wrong by a factor of 4 in blue.
  EXPECT_LT(errorOf(gains, light), 1.2);
}

TEST(Neutral, ClippedBlocksDoNotCount) {
  const Neutral light = {0.45, 1, 0.6};
  auto blocks = surfaces(light);
  blocks.insert(blocks.end(), 20'000, Block{{1, 1, 1}, true});
  EXPECT_EQ(gainsOf(blocks, 0.001), gainsOf(surfaces(light), 0.001));
}

TEST(Neutral, ColoursOfFewLevelsAreAveraged) {
  // Of levels 0 to 3, whose ratios say nothing; means of 0.9, 2 and 1.2 levels.
  std::vector<Block> blocks;
  Noise random;
  for (int i = 0; i < 50'000; ++i)
    blocks.push_back({{random.below(10) < 9 ? 1.f : 0.f, random.below(2) ? 3.f : 1.f,
                       random.below(5) < 1 ? 2.f : 1.f},
                      false});
  for (Block& block : blocks)
    for (float& colour : block.colour) colour /= 255;
  EXPECT_LT(errorOf(gainsOf(blocks, 1 / 255.0), {0.45, 1, 0.6}), 0.1);
}

TEST(Neutral, NoColoursMeanNoGains) {
  const Gains none = {kLookOne, kLookOne, kLookOne};
  EXPECT_EQ(gainsOf({}, 0.001), none);
  EXPECT_EQ(gainsOf(std::vector<Block>(10), 0.001), none);
  EXPECT_EQ(gainsOf(std::vector<Block>(10, {{1, 1, 1}, true}), 0.001), none);
}

TEST(Neutral, TheSmallestGainIsOneAndTheLargestSixteen) {
  EXPECT_EQ(gainsOfNeutral({0.5, 1, 0.8}), (Gains{8192, 4096, 5120}));
  EXPECT_EQ(gainsOfNeutral({2, 1, 1e-6}), (Gains{4096, 8192, 65536}));
}

}  // namespace
}  // namespace vistrel::app
