// Laroche's gradients: the axis of green, the differences of colours, and the rim.
#include "tests/demosaic/demosaiced.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Laroche);

template <class T>
Demosaiced<T> laroche(const Frame<T>& frame) {
  return {ImageColorGradientLaroche, BAYER_GRBG, frame};
}

// Rows of G R and B G: red at (3, 2), its greens at (3, 1), (2, 2), (4, 2) and (3, 3), red again
// two pixels away. Smoothed, the greens are 50 and 50 left and right, 20 and 61 above and below.
Frame<uint8_t> cross() {
  Frame<uint8_t> frame(8, 8, 0);
  frame.at(2, 2) = frame.at(4, 2) = 80;
  frame.at(3, 3) = 82;
  return frame;
}

constexpr int kHorizontal = 50, kVertical = 40, kBoth = 45;  // (20 + 61) / 2, (100 + 81) / 4

TEST_P(Laroche, GreenFollowsTheAxisOnWhichTheOwnColourDepartsLess) {
  Frame<uint8_t> frame = cross();
  frame.at(3, 0) = 10;  // the mean above and below is 5
  EXPECT_EQ(laroche(frame).green(3, 2), kHorizontal);
  frame.at(5, 2) = 12;  // left and right it is 6
  EXPECT_EQ(laroche(frame).green(3, 2), kVertical);
  frame.at(3, 2) = 6;  // differs by 1 and by 0
  EXPECT_EQ(laroche(frame).green(3, 2), kHorizontal);
}

TEST_P(Laroche, ATieOfAxesTakesTheMeanOfFour) {
  EXPECT_EQ(laroche(cross()).green(3, 2), kBoth);
  Frame<uint8_t> frame = cross();
  frame.at(3, 2) = 7;
  frame.at(3, 0) = frame.at(3, 4) = 3;   // differs by 4
  frame.at(1, 2) = frame.at(5, 2) = 11;  // the other way
  EXPECT_EQ(laroche(frame).green(3, 2), kBoth);
}

TEST_P(Laroche, MeansOfTheOwnColourAreTruncated) {
  Frame<uint8_t> frame = cross();
  frame.at(3, 0) = 1;  // (1 + 0) / 2 does not differ
  EXPECT_EQ(laroche(frame).green(3, 2), kBoth);
}

// Green is 100 everywhere, so that the four differences are 10, 20, 50 and 91, each less 100.
TEST_P(Laroche, TheOtherColourAddsTheMeanDifferenceOfTheDiagonalsRoundedDown) {
  Frame<uint8_t> frame(8, 8, 100);
  frame.at(2, 1) = 10;
  frame.at(4, 1) = 20;
  frame.at(2, 3) = 50;
  frame.at(4, 3) = 91;
  EXPECT_EQ(laroche(frame).blue(3, 2), 100 - 58);  // -229 / 4 = -57.25
}

// Greens by column, smoothed: 9 at 2, 14 at 4, 11 at 6. Green at the red sites (3, 4) and (5, 4) is
// 11 and 12, since their row differs less from `left` and `right` than their columns of 12.
Demosaiced<uint8_t> ridge(uint8_t left, uint8_t right) {
  Frame<uint8_t> frame = columns<uint8_t>({8, 8, 8, 12, 16, 12, 12, 8}, 10);
  frame.at(3, 4) = left;
  frame.at(5, 4) = right;
  return laroche(frame);
}

TEST_P(Laroche, AGreenSiteTakesTheDifferencesOfItsRowForTheColourOfItsRow) {
  EXPECT_EQ(ridge(255, 249).green(3, 4), 11);
  EXPECT_EQ(ridge(255, 249).green(5, 4), 12);
  EXPECT_EQ(ridge(255, 249).red(4, 4), 254);  // 14 + (244 + 237) / 2
  EXPECT_EQ(ridge(255, 250).red(4, 4), 255);
  EXPECT_EQ(ridge(255, 253).red(4, 4), 255);  // 14 + 242 is clamped
}

// Blue above and below (4, 4) is 201 and 16. Their greens are 14, the mean of their column, and
// 12, the mean of 12 and 13 to the left and to the right.
TEST_P(Laroche, AGreenSiteTakesTheDifferencesOfItsColumnForTheOtherColour) {
  Frame<uint8_t> frame = columns<uint8_t>({8, 8, 8, 12, 16, 12, 12, 8}, 10);
  frame.at(4, 3) = 201;
  EXPECT_EQ(laroche(frame).blue(4, 4), 14 + (187 + 4) / 2);
}

// Greens by column, smoothed: 10 at 4 between 15 and 15; the red sites beside it get 12.
TEST_P(Laroche, ANegativeSumStoresZero) {
  Frame<uint8_t> frame = columns<uint8_t>({16, 16, 16, 12, 8, 12, 16, 16}, 10);
  frame.at(3, 4) = frame.at(5, 4) = 0;
  const auto out = laroche(frame);
  EXPECT_EQ(out.green(3, 4), 12);
  EXPECT_EQ(out.green(4, 4), 10);
  EXPECT_EQ(out.red(4, 4), 0);  // 10 - 12
}

// quirk: guard-green
TEST_P(Laroche, AFlatFrameStaysFlatInsideAndBrightensOnTheRim) {
  const auto out = laroche(Frame<uint8_t>(8, 6, 100));
  for (int y = 1; y < 5; ++y)
    for (int x = 1; x < 7; ++x) {
      EXPECT_EQ(out.blue(x, y), 100);
      EXPECT_EQ(out.green(x, y), 100);
      EXPECT_EQ(out.red(x, y), 100);
    }
  EXPECT_EQ(out.red(0, 0), 150);  // 100 + (0 + 100) / 2
  EXPECT_EQ(out.blue(0, 0), 150);
  EXPECT_EQ(out.blue(3, 0), 150);  // 100 + (0 + 0 + 100 + 100) / 4
}

// quirk: ten-bit-limit
TEST_P(Laroche, ComputedColoursStopAtTenBitsSensedOnesAndGreenPass) {
  for (unsigned v : {1024u, 4000u, 65535u}) {
    const auto out = laroche(Frame<uint16_t>(8, 8, v));
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) {
        const bool redSite = y % 2 == 0 && x % 2 == 1, blueSite = y % 2 == 1 && x % 2 == 0;
        EXPECT_EQ(out.blue(x, y), blueSite ? v : 1023u);
        EXPECT_EQ(out.green(x, y), v);
        EXPECT_EQ(out.red(x, y), redSite ? v : 1023u);
      }
  }
}

}  // namespace
}  // namespace vistrel::core::test
