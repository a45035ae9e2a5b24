// The primitive for nearest neighbours: which calls fail, and which pixels a rectangle covers.
#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(CfaToRgb);

TEST(CfaToRgbStatus, ReportsTheFirstOfSeveralFaults) {
  uint8_t sample = 7, pixel[3] = {1, 2, 3};
  const CfaRect roi = {0, 0, 1, 1};
  EXPECT_EQ(ippiCFAToRGB_8u_C1C3R(nullptr, roi, {1, 1}, 1, pixel, 3, 4, 0), -8);
  EXPECT_EQ(ippiCFAToRGB_8u_C1C3R(&sample, roi, {1, 1}, 1, nullptr, 3, 4, 0), -8);
  EXPECT_EQ(ippiCFAToRGB_8u_C1C3R(&sample, roi, {1, 2}, 1, pixel, 3, 4, 0), -6);
  EXPECT_EQ(ippiCFAToRGB_8u_C1C3R(&sample, roi, {2, 1}, 1, pixel, 3, 4, 0), -6);
  EXPECT_EQ(ippiCFAToRGB_8u_C1C3R(&sample, roi, {2, 2}, 1, pixel, 3, 4, 0), -5);
  EXPECT_THAT(pixel, ElementsAre(1, 2, 3));
}

TEST(CfaToRgbStatus, RejectsASmallFrameAndABadGridWithNothingWritten) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    const auto status = [](int w, int h, int grid) {
      Rgb<T> rgb({0, 0, w, h});
      const int32_t result = cfaToRgb(Mosaic<T>(w, h, 9), {0, 0, w, h}, grid, rgb);
      EXPECT_TRUE(rgb.isUntouched());
      return result;
    };
    EXPECT_EQ(status(1, 100, 0), -6);
    EXPECT_EQ(status(100, 1, 0), -6);
    EXPECT_EQ(status(8, 8, 4), -5);
    EXPECT_EQ(status(8, 8, -1), -5);
  });
}

TEST_P(CfaToRgb, ARectangleClippedToNothingSucceeds) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    for (const CfaRect& roi : {CfaRect{9, 0, 3, 3}, CfaRect{0, 8, 3, 3}, CfaRect{20, 30, 3, 3},
                               CfaRect{2, 2, 0, 3}, CfaRect{2, 2, 3, -1}})
      EXPECT_TRUE(nearest(noiseMosaic<T>(9, 8, 1), 0, roi).isUntouched());
  });
}

TEST_P(CfaToRgb, TheFarSidesAreClippedToTheFrame) {
  const Rgb<uint8_t> rgb = nearest(noiseMosaic<uint8_t>(9, 8, 2, 80), 0, {4, 3, 20, 20});
  EXPECT_TRUE(rgb.hasOnly({4, 3, 5, 5}));
}

TEST_P(CfaToRgb, TheInterpolationArgumentChangesNothing) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(20, 9, 3);
  const Rgb<uint8_t> plain = nearest(m, 2);
  for (int interpolation : {7, -1, 1}) {
    Rgb<uint8_t> rgb(m.all());
    EXPECT_EQ(cfaToRgb(m, m.all(), 2, rgb, interpolation), 0);
    for (int y = 0; y < 9; ++y)
      for (int x = 0; x < 20; ++x) EXPECT_EQ(rgb.at(x, y), plain.at(x, y));
  }
}

// (x + 1) >> 1 samples a row: the odd byte of a step is dropped.
TEST_P(CfaToRgb, AnOddStepOfSixteenBitSamplesLosesItsLastByte) {
  const Mosaic<uint16_t> m = noiseMosaic<uint16_t>(12, 7, 4);
  const Rgb<uint16_t> even = nearest(m, 1);
  Rgb<uint16_t> odd(m.all());
  EXPECT_EQ(ippiCFAToRGB_16u_C1C3R(m.samples.data(), m.all(), m.size(), 2 * 12 + 1, odd.data(),
                                   odd.stepBytes() + 1, 1, 0),
            0);
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 12; ++x) EXPECT_EQ(odd.at(x, y), even.at(x, y));
}

}  // namespace
}  // namespace vistrel::core::test
