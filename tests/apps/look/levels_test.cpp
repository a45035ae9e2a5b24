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

// All places have the same histogram.
uint32_t whiteIn(const Histogram& histogram, uint32_t fullScale) {
  return whiteOf({histogram, histogram, histogram, histogram}, fullScale);
}

TEST(White, IsFullScaleIfNothingIsClipped) {
  EXPECT_EQ(whiteIn(scene(10, 64, 700), 1023), 1023u);
  EXPECT_EQ(whiteIn(scene(10, 64, 1024), 1023), 1023u);
  EXPECT_EQ(whiteIn(Histogram(256), 255), 255u);
}

TEST(White, IsWhereASpikeIs) {
  for (const uint32_t white : {300u, 700u, 959u, 1020u, 1023u}) {
    Histogram histogram = scene(10, 64, white);
    histogram[white] = countOf(histogram) / 50;
    EXPECT_EQ(whiteIn(histogram, 1023), white);
  }
}

TEST(White, IsFoundAmongSamplesWithoutLowBits) {
  Histogram histogram(4096);
  for (uint32_t value = 96; value < 4092; value += 4) histogram[value] = 60;
  histogram[4092] = 1200;
  EXPECT_EQ(whiteIn(histogram, 4095), 4092u);
}

TEST(White, IsBelowHotPixels) {
  Histogram histogram = scene(10, 64, 959);
  histogram[959] = countOf(histogram) / 50;
  histogram[1023] = countOf(histogram) / 5000;
  EXPECT_EQ(whiteIn(histogram, 1023), 959u);
}

TEST(White, IsAtTheLowerEndOfANoisySpike) {
  Histogram histogram = scene(12, 100, 3600);
  Noise noise;
  for (int i = 0; i < 60'000; ++i) ++histogram[static_cast<uint32_t>(3600 + 20 * noise.normal())];
  const uint32_t white = whiteIn(histogram, 4095);
  EXPECT_GE(white, 3600u - 4 * 20);
  EXPECT_LE(white, 3600u);
}

// Every step has three times the samples of those below it, as in a pile that has no end.
TEST(White, IsAboveAQuarter) {
  Histogram histogram(1024);
  double count = 100;
  for (size_t value = 200; value < 700; value += 4, count *= 1.3)
    std::fill_n(histogram.begin() + static_cast<ptrdiff_t>(value), 4, static_cast<uint64_t>(count));
  std::fill_n(histogram.begin() + 696, 4, static_cast<uint64_t>(2 * count));
  histogram[4] = 2 * countOf(histogram);  // most of the frame is dark
  EXPECT_GE(whiteIn(histogram, 1023), 256u);
  EXPECT_LT(whiteIn(histogram, 1023), 1023u);
}

// A sheet of paper in a dark room.
TEST(White, IsNotThatOfADarkSurface) {
  Histogram histogram = scene(10, 20, 90);
  histogram[90] = 5000;
  EXPECT_EQ(whiteIn(histogram, 1023), 1023u);
}

TEST(White, IsNotThatOfAPlainSurface) {
  Noise noise;
  std::array<Histogram, 4> places;
  places.fill(Histogram(1024));
  for (int i = 0; i < 10'000; ++i)
    for (size_t place = 0; place < 4; ++place)
      ++places[place][static_cast<uint32_t>((place == 1 ? 700 : 400) + 3 * noise.normal())];
  EXPECT_EQ(whiteOf(places, 1023), 1023u);
  places[1].assign(1024, 0);
  places[1][959] = 10'000;  // green is clipped
  EXPECT_EQ(whiteOf(places, 1023), 959u);
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

// The noise of a wall of which nothing is dark.
TEST(Black, IsNotThatOfAPlainSurface) {
  Noise noise;
  Histogram wall(1024);
  for (int i = 0; i < 10'000; ++i) ++wall[static_cast<uint32_t>(100 + 3 * noise.normal())];
  EXPECT_LE(blackOf({wall, wall, wall, wall}, 1023), 20u);
}

// An underexposed scene of a sensor that adds a sixteenth of full scale.
TEST(Black, IsThatOfTheSensorWhateverTheSceneAdds) {
  for (const uint32_t bits : {8u, 10u, 12u, 14u}) {
    const uint32_t fullScale = (1u << bits) - 1, black = (fullScale + 1) / 16;
    const Histogram dim = scene(bits, black, black + black / 3);
    const uint32_t found = blackOf({dim, dim, dim, dim}, fullScale);
    EXPECT_GE(found, black) << bits;
    EXPECT_LE(found, black + black / 16) << bits;
  }
}

TEST(Black, PlacesWithoutSamplesDoNotCount) {
  const Histogram none(1024);
  EXPECT_GE(blackOf({scene(10, 64, 900), none, none, none}, 1023), 64u);
}

}  // namespace
}  // namespace vistrel::app
