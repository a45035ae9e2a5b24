// Measures against published values and counts by hand.
#include "tests/apps/look/measures.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "tests/apps/program.h"

namespace vistrel {
namespace {

TEST(Measures, TheLabOfPrimariesIsAsPublished) {
  const struct {
    Srgb colour;
    Lab lab;
  } cases[] = {{{255, 255, 255}, {100, 0, 0}},
               {{0, 0, 0}, {0, 0, 0}},
               {{255, 0, 0}, {53.24, 80.09, 67.20}},
               {{0, 255, 0}, {87.73, -86.18, 83.18}},
               {{0, 0, 255}, {32.30, 79.19, -107.86}}};
  for (const auto& [colour, expected] : cases) {
    const Lab lab = labOf(colour);
    EXPECT_NEAR(lab.lightness, expected.lightness, 0.02);
    EXPECT_NEAR(lab.a, expected.a, 0.02);
    EXPECT_NEAR(lab.b, expected.b, 0.02);
  }
  EXPECT_NEAR((Lab{50, 3, -4}.chroma()), 5, 1e-12);
}

TEST(Measures, LumaIsMeanMedianAndWhite) {
  const Picture picture{2, 2, 3, 8, 0, {255, 255, 255, 0, 0, 0, 100, 100, 100, 255, 255, 0}};
  const Luma luma = lumaOf(picture);
  const double yellow = 255 * (0.2126 + 0.7152);
  EXPECT_NEAR(luma.mean, (255 + 100 + yellow) / 4, 1e-9);
  EXPECT_NEAR(luma.median, yellow, 1e-9);  // the upper one of two
  EXPECT_EQ(luma.percentWhite, 25);
}

TEST(Measures, GrayAndSixteenBitsAreScaled) {
  const Picture picture{2, 1, 1, 16, 0, {257 * 40, 257 * 60}};
  EXPECT_NEAR(lumaOf(picture).mean, 50, 1e-9);
  EXPECT_NEAR(meanOf(picture, {0, 0, 2, 1})[2], 50, 1e-9);
  EXPECT_THROW(meanOf(picture, {1, 0, 2, 1}), std::runtime_error);
}

Mosaic mosaicOf(uint32_t width, uint32_t height,
                const std::function<uint32_t(uint32_t, uint32_t)>& sample) {
  const Scratch scratch;
  scratch.write("mosaic.pgm", pgm(width, height, 65535, sample));
  return Mosaic(scratch / "mosaic.pgm");
}

// Ten white pixels; the sample at (1, 0) is clipped, so those at (0, 0) to (3, 2) may be white.
TEST(Measures, BurntPixelsAreWhiteFarFromClippedSamples) {
  Picture picture{20, 5, 3, 8, 0, std::vector<uint16_t>(300, 255)};
  const auto mosaic =
      mosaicOf(20, 5, [](uint32_t x, uint32_t y) { return x == 1 && !y ? 900 : 10; });
  EXPECT_EQ(percentBurnt(picture, mosaic, 900), 88);
  EXPECT_EQ(percentBurnt(picture, mosaic, 901), 100);
  for (size_t i = 150; i < 300; i += 3) picture.samples[i] = 254;
  EXPECT_EQ(percentBurnt(picture, mosaic, 900), 38);
}

// Every fifth tile in every second row is a star, red or blue, on a sky of 100 and 101.
TEST(Measures, StarColoursAreThoseOfTheMosaic) {
  const auto isStar = [](uint32_t x, uint32_t y) { return x / 8 % 5 == 0 && y / 8 % 2 == 0; };
  const auto isRed = [](uint32_t x) { return x / 40 % 2 == 0; };
  const auto mosaic = mosaicOf(160, 64, [&](uint32_t x, uint32_t y) {
    const uint32_t filter = x % 2 + y % 2;
    if (!isStar(x, y)) return 100 + x / 8 % 2;
    return filter == 1 ? 800u : isRed(x) == (filter == 0) ? 1000u : 500u;
  });
  const auto coloursOf = [&](uint16_t more, uint16_t less, int white) {
    Picture picture{160, 64, 3, 8, 0, {}};
    for (uint32_t y = 0; y < 64; ++y)
      for (uint32_t x = 0; x < 160; ++x)
        for (const uint16_t v : {isRed(x) ? more : less, uint16_t{150}, isRed(x) ? less : more})
          picture.samples.push_back(isStar(x, y) ? v : uint16_t{30});
    return starColoursOf(picture, mosaic, "rggb", white);
  };
  const StarColours kept = coloursOf(180, 120, 65535);
  EXPECT_EQ(kept.tiles, 16u);
  EXPECT_NEAR(kept.correlation, 1, 1e-9);
  EXPECT_NEAR(kept.deviation, 60 / 450.0, 1e-9);
  EXPECT_NEAR(coloursOf(120, 180, 65535).correlation, -1, 1e-9);
  EXPECT_EQ(coloursOf(150, 150, 65535).deviation, 0);
  EXPECT_EQ(coloursOf(180, 120, 1000).tiles, 0u);
}

}  // namespace
}  // namespace vistrel
