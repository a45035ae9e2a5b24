// Measures against published values and counts by hand.
#include "tests/apps/look/measures.h"

#include <gtest/gtest.h>

#include <stdexcept>

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

}  // namespace
}  // namespace vistrel
