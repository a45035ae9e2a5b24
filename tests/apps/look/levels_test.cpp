// Black and white of histograms whose levels are known.
#include "apps/look/levels.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/apps/look/frame.h"

namespace vistrel::app {
namespace {

// A scene from `black` to `white` that has fewer samples the brighter they are.
Histogram scene(uint32_t bits, uint32_t black, uint32_t white) {
  Histogram histogram(size_t{1} << bits);
  for (uint32_t value = black; value < white; ++value)
    histogram[value] = 20 + 400 * (white - value) / (white - black);
  return histogram;
}

TEST(FullScale, IsThatOfTheBits) {
  EXPECT_EQ(fullScaleOf(scene(12, 100, 900), 12), 4095u);
  EXPECT_EQ(fullScaleOf(Histogram(256), 8), 255u);
}

TEST(FullScale, OfSixteenBitsIsThatOfTheBitsInUse) {
  EXPECT_EQ(fullScaleOf(scene(16, 100, 3000), 16), 4095u);
  EXPECT_EQ(fullScaleOf(scene(16, 100, 65536), 16), 65535u);
  EXPECT_EQ(fullScaleOf(Histogram(65536), 16), 255u);
}

TEST(White, IsFullScaleIfNothingIsClipped) {
  EXPECT_EQ(whiteOf(scene(10, 64, 700), 1023), 1023u);
  EXPECT_EQ(whiteOf(scene(10, 64, 1024), 1023), 1023u);
  EXPECT_EQ(whiteOf(Histogram(256), 255), 255u);
}

TEST(White, IsWhereASpikeIs) {
  for (const uint32_t white : {300u, 700u, 959u, 1020u, 1023u}) {
    Histogram histogram = scene(10, 64, white);
    histogram[white] = countOf(histogram) / 50;
    EXPECT_EQ(whiteOf(histogram, 1023), white);
  }
}

TEST(White, IsFoundAmongSamplesWithoutLowBits) {
  Histogram histogram(4096);
  for (uint32_t value = 96; value < 4092; value += 4) histogram[value] = 60;
  histogram[4092] = 1200;
  EXPECT_EQ(whiteOf(histogram, 4095), 4092u);
}

TEST(White, IsBelowHotPixels) {
  Histogram histogram = scene(10, 64, 959);
  histogram[959] = countOf(histogram) / 50;
  histogram[1023] = countOf(histogram) / 5000;
  EXPECT_EQ(whiteOf(histogram, 1023), 959u);
}

TEST(White, IsAtTheLowerEndOfANoisySpike) {
  Histogram histogram = scene(12, 100, 3600);
  Noise noise;
  for (int i = 0; i < 60'000; ++i) ++histogram[static_cast<uint32_t>(3600 + 20 * noise.normal())];
  const uint32_t white = whiteOf(histogram, 4095);
  EXPECT_GE(white, 3600u - 4 * 20);
  EXPECT_LE(white, 3600u);
}

// Every step has three times the samples of those below it, as in a pile that has no end.
TEST(White, IsNeverNearZero) {
  Histogram histogram(1024);
  double count = 100;
  for (size_t value = 8; value < 400; value += 4, count *= 1.3)
    std::fill_n(histogram.begin() + static_cast<ptrdiff_t>(value), 4, static_cast<uint64_t>(count));
  std::fill_n(histogram.begin() + 396, 4, static_cast<uint64_t>(2 * count));
  EXPECT_GE(whiteOf(histogram, 1023), 32u);
  EXPECT_LT(whiteOf(histogram, 1023), 100u);
}

TEST(Black, IsTheDarkEndOfTheDarkestPlace) {
  const auto black = blackOf(
      {scene(10, 70, 900), scene(10, 64, 900), scene(10, 66, 900), scene(10, 90, 900)}, 1023);
  EXPECT_GE(black, 64u);
  EXPECT_LE(black, 65u);
}

TEST(Black, IgnoresDeadPixels) {
  Histogram histogram = scene(10, 64, 900);
  histogram[0] = countOf(histogram) / 1000;
  histogram[3] = 1;
  const auto black = blackOf({histogram, histogram, histogram, histogram}, 1023);
  EXPECT_GE(black, 64u);
  EXPECT_LE(black, 65u);
}

TEST(Black, IsAtMostAnEighth) {
  const Histogram bright = scene(10, 600, 900);
  EXPECT_EQ(blackOf({bright, bright, bright, bright}, 1023), 127u);
}

TEST(Black, PlacesWithoutSamplesDoNotCount) {
  const Histogram none(1024);
  EXPECT_GE(blackOf({scene(10, 64, 900), none, none, none}, 1023), 64u);
}

}  // namespace
}  // namespace vistrel::app
