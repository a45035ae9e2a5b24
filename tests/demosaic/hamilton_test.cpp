// Hamilton's gradients: the axis of green, the diagonal of the other colour, and the rim.
#include <cstdlib>

#include "tests/demosaic/demosaiced.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Hamilton);

template <class T>
Demosaiced<T> hamilton(const Frame<T>& frame, unsigned before = 0xEE) {
  return {ImageColorGradientHamilton, BAYER_GRBG, frame, before};
}

// Rows of G R and B G: red at (3, 2), its greens at (3, 1), (2, 2), (4, 2) and (3, 3).

TEST_P(Hamilton, GreenFollowsTheAxisOnWhichItChangesLess) {
  Frame<uint8_t> across(8, 8, 0), upright(8, 8, 0);
  across.at(3, 3) = across.at(2, 2) = across.at(4, 2) = 80;
  upright.at(4, 2) = upright.at(3, 1) = upright.at(3, 3) = 80;
  // Smoothed, the greens around are 20 and 60 on one axis, 50 and 50 on the other.
  EXPECT_EQ(hamilton(across).green(3, 2), 50);
  EXPECT_EQ(hamilton(upright).green(3, 2), 50);
}

TEST_P(Hamilton, ATieOfAxesTruncatesTheMeanOfFour) {
  Frame<uint8_t> frame(8, 8, 0);
  frame.at(3, 1) = frame.at(3, 3) = 8;
  frame.at(2, 2) = frame.at(4, 2) = 9;
  frame.at(2, 0) = 6;
  frame.at(5, 1) = 4;
  // Smoothed: above 7, below 6, left 6, right 7.
  EXPECT_EQ(hamilton(frame).green(3, 2), 26 / 4);
}

// quirk: unsensed-correction
TEST_P(Hamilton, TheSensedColourDoesNotCorrectGreen) {
  for (unsigned red : {0u, 50u, 255u}) {
    Frame<uint8_t> frame(8, 8, 0);
    frame.at(3, 3) = frame.at(2, 2) = frame.at(4, 2) = 80;
    frame.at(3, 2) = static_cast<uint8_t>(red);
    EXPECT_EQ(hamilton(frame).green(3, 2), 50);
  }
}

// Blue at the diagonals of (3, 2), green flat.
Frame<uint8_t> diagonals(uint8_t upperLeft, uint8_t lowerRight, uint8_t upperRight,
                         uint8_t lowerLeft) {
  Frame<uint8_t> frame(8, 8, 100);
  frame.at(2, 1) = upperLeft;
  frame.at(4, 3) = lowerRight;
  frame.at(4, 1) = upperRight;
  frame.at(2, 3) = lowerLeft;
  return frame;
}

TEST_P(Hamilton, TheOtherColourFollowsTheQuieterDiagonal) {
  EXPECT_EQ(hamilton(diagonals(10, 20, 50, 90)).blue(3, 2), 15);
  EXPECT_EQ(hamilton(diagonals(50, 90, 10, 20)).blue(3, 2), 15);
  EXPECT_EQ(hamilton(diagonals(10, 21, 50, 61)).blue(3, 2), 142 / 4);  // a tie
}

// Greens by column, smoothed: 13 at 2, 10 at 3, 14 at 4. Red site (3, 4), whose green changes less
// up and down, has second differences of 20 - 13 - 14 on both diagonals.
Frame<uint8_t> valley() { return columns<uint8_t>({20, 20, 13, 6, 15, 20, 20, 20}, 10); }

// Greens by column, smoothed: 12 at 3, 14 at 4, `right` at 5.
Frame<uint8_t> ridge(unsigned right) {
  return columns<uint8_t>({8, 8, 8, 12, 16, 12, right == 13 ? 12u : 8u, 8}, 10);
}

TEST_P(Hamilton, ANegativeSumStoresZero) {
  Frame<uint8_t> frame = valley();
  frame.at(2, 3) = frame.at(4, 3) = frame.at(2, 5) = frame.at(4, 5) = 0;
  EXPECT_EQ(hamilton(frame).green(3, 4), 10);
  EXPECT_EQ(hamilton(frame).blue(3, 4), 0);  // 0.25 * 0 + 0.25 * -14
}

TEST_P(Hamilton, CorrectionsWeighAHalfAtColourSitesAndAQuarterAtGreenOnes) {
  Frame<uint8_t> frame = valley();
  frame.at(2, 3) = frame.at(4, 3) = frame.at(2, 5) = frame.at(4, 5) = 100;
  EXPECT_EQ(hamilton(frame).blue(3, 4), 96);  // 100 + 0.25 * -14
  frame = ridge(13);
  frame.at(3, 4) = frame.at(5, 4) = 100;
  EXPECT_EQ(hamilton(frame).red(4, 4), 100);  // 100 + 0.25 * 3
  frame = ridge(12);
  frame.at(3, 4) = frame.at(5, 4) = 100;
  EXPECT_EQ(hamilton(frame).red(4, 4), 101);  // 100 + 0.25 * 4
}

TEST_P(Hamilton, SumsAreTruncatedThenClamped) {
  Frame<uint8_t> frame = ridge(13);
  frame.at(3, 4) = 255;
  frame.at(5, 4) = 253;
  EXPECT_EQ(hamilton(frame).green(5, 4), 13);
  EXPECT_EQ(hamilton(frame).red(4, 4), 254);  // 0.5 * 508 + 0.25 * 3 = 254.75
  frame.at(5, 4) = 255;
  EXPECT_EQ(hamilton(frame).red(4, 4), 255);  // 255.75
  frame = ridge(12);
  frame.at(3, 4) = frame.at(5, 4) = 255;
  EXPECT_EQ(hamilton(frame).red(4, 4), 255);  // 256
}

// quirk: guard-green
TEST_P(Hamilton, AFlatFrameStaysFlatInsideAndBrightensOnTheRim) {
  const auto out = hamilton(Frame<uint8_t>(8, 6, 100));
  for (int y = 1; y < 5; ++y)
    for (int x = 1; x < 7; ++x) {
      EXPECT_EQ(out.blue(x, y), 100);
      EXPECT_EQ(out.green(x, y), 100);
      EXPECT_EQ(out.red(x, y), 100);
    }
  EXPECT_EQ(out.red(0, 0), 125);  // 100 + 0.25 * (200 - 0 - 100)
  EXPECT_EQ(out.blue(0, 0), 125);
  EXPECT_EQ(out.blue(3, 0), 150);  // 0.25 * 400 + 0.25 * (100 + 100)
}

// quirk: ten-bit-limit
TEST_P(Hamilton, ComputedSamplesStopAtTenBitsSensedOnesPass) {
  for (unsigned v : {1024u, 4000u, 65535u}) {
    const auto out = hamilton(Frame<uint16_t>(8, 8, v));
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) {
        const bool redSite = y % 2 == 0 && x % 2 == 1, blueSite = y % 2 == 1 && x % 2 == 0;
        EXPECT_EQ(out.blue(x, y), blueSite ? v : 1023u);
        EXPECT_EQ(out.green(x, y), redSite || blueSite ? 1023u : v);
        EXPECT_EQ(out.red(x, y), redSite ? v : 1023u);
      }
  }
}

// A sample of all sixteen bits, in a frame of twelve, changes nothing beyond its reach.
TEST_P(Hamilton, OneWideSampleStaysAmongItsNeighbours) {
  constexpr int width = 80, height = 14, x = 37;
  for (int y = 0; y < height; ++y) {
    Frame<uint16_t> frame(width, height, 0), wide(width, height, 0);
    frame.samples = wide.samples = noise<uint16_t>(width * height, 4095, 5);
    wide.at(x, static_cast<uint32_t>(y)) = 65535;
    const auto before = hamilton(frame), after = hamilton(wide);
    for (int j = 0; j < height; ++j)
      for (int i = 0; i < width; ++i) {
        if (std::abs(i - x) <= 3 && std::abs(j - y) <= 3) continue;
        ASSERT_EQ(before.blue(i, j), after.blue(i, j)) << i << ", " << j;
        ASSERT_EQ(before.green(i, j), after.green(i, j)) << i << ", " << j;
        ASSERT_EQ(before.red(i, j), after.red(i, j)) << i << ", " << j;
      }
  }
}

TEST_P(Hamilton, ASinglePixelTakesItsColoursFromWhatTheBufferHeld) {
  const auto green = hamilton(Frame<uint8_t>(1, 1, 100), 40);
  EXPECT_EQ(green.blue(0, 0), 70);  // 0.5 * 80 + 0.25 * (200 - 80)
  EXPECT_EQ(green.green(0, 0), 100);
  EXPECT_EQ(green.red(0, 0), 70);
}

}  // namespace
}  // namespace vistrel::core::test
