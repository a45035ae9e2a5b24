// Pixel grouping in whole frames: directions, limits, the rim.
#include "tests/demosaic/demosaiced.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(PixelGrouping);

template <class T>
Demosaiced<T> grouping(const Frame<T>& frame, unsigned before = 0xEE) {
  return {ImageColorPixelGrouping, BAYER_GRBG, frame, before};
}

// Rows of G R and B G: around the red site (3, 2), red at (3, 0), (5, 2), (3, 4) and (1, 2).
template <class T>
Frame<T> cross(unsigned rest, unsigned own, unsigned north, unsigned east, unsigned south,
               unsigned west) {
  Frame<T> frame(8, 8, rest);
  frame.at(3, 2) = static_cast<T>(own);
  frame.at(3, 0) = static_cast<T>(north);
  frame.at(5, 2) = static_cast<T>(east);
  frame.at(3, 4) = static_cast<T>(south);
  frame.at(1, 2) = static_cast<T>(west);
  return frame;
}

template <class T>
int greenAmid(const Frame<T>& frame) {
  return grouping(frame).green(3, 2);
}

TEST_P(PixelGrouping, AFlatFrameStaysFlatInside) {
  for (unsigned v : {0u, 1u, 100u, 255u}) {
    const auto bytes = grouping(Frame<uint8_t>(8, 8, v));
    const auto samples16 = grouping(Frame<uint16_t>(8, 8, 4 * v));
    for (int y = 1; y < 7; ++y)
      for (int x = 1; x < 7; ++x) {
        EXPECT_EQ(bytes.blue(x, y), int(v));
        EXPECT_EQ(bytes.green(x, y), int(v));
        EXPECT_EQ(bytes.red(x, y), int(v));
        EXPECT_EQ(samples16.blue(x, y), int(4 * v));
        EXPECT_EQ(samples16.green(x, y), int(4 * v));
        EXPECT_EQ(samples16.red(x, y), int(4 * v));
      }
  }
}

// Where green is the same all around, the costs are those of the colour alone.
TEST_P(PixelGrouping, TheQuietestDirectionCorrectsGreen) {
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 96, 140, 60, 60)), 101);    // north
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 140, 96, 60, 60)), 101);    // east
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 96, 104, 104, 104)), 101);  // of equals, north
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 140, 96, 104, 104)), 101);  // then east
}

// quirk: exchanged-directions
TEST_P(PixelGrouping, SouthAndWestAreExchanged) {
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 140, 140, 96, 60)), 110);  // south is the quietest
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 140, 140, 60, 96)), 110);  // west is
  EXPECT_EQ(greenAmid(cross<uint8_t>(100, 100, 140, 140, 96, 104)), 99);  // both: west counts
  EXPECT_EQ(greenAmid(cross<uint16_t>(100, 100, 140, 140, 96, 60)), 110);
  EXPECT_EQ(greenAmid(cross<uint16_t>(100, 5000, 5040, 5040, 4996, 4900)), 125);
}

// quirk: overshoot-to-black
TEST_P(PixelGrouping, AnOvershootOfBytesTurnsBlack) {
  EXPECT_EQ(greenAmid(cross<uint8_t>(255, 20, 10, 200, 200, 200)), 0);    // 1030 / 4 = 257
  EXPECT_EQ(greenAmid(cross<uint8_t>(255, 14, 10, 200, 200, 200)), 0);    // 1024 / 4 = 256
  EXPECT_EQ(greenAmid(cross<uint8_t>(255, 13, 10, 200, 200, 200)), 255);  // 1023 / 4
  EXPECT_EQ(greenAmid(cross<uint8_t>(0, 10, 20, 200, 200, 200)), 0);      // -10 / 4
}

// quirk: cost-ceiling
TEST_P(PixelGrouping, CostsAbove65535LeaveSouth) {
  // Costs: south 66000, the others 80000. West's value is (36000 - 40000) / 4.
  EXPECT_EQ(greenAmid(cross<uint16_t>(9000, 0, 40000, 40000, 33000, 40000)), 750);
  // Costs: south 65534. Now it is found, and west's value taken.
  EXPECT_EQ(greenAmid(cross<uint16_t>(9000, 0, 40000, 40000, 32767, 40000)), 0);
}

// Blue at the diagonals of (3, 2), green and red flat.
Frame<uint8_t> fourDiagonals(uint8_t upperLeft, uint8_t lowerRight, uint8_t upperRight,
                             uint8_t lowerLeft) {
  Frame<uint8_t> frame(8, 8, 100);
  frame.at(2, 1) = upperLeft;
  frame.at(4, 3) = lowerRight;
  frame.at(4, 1) = upperRight;
  frame.at(2, 3) = lowerLeft;
  return frame;
}

// The blue of 104 makes its own green 101: (200 - 100 - 101) / 4 + 102 = 101.75.
TEST_P(PixelGrouping, TheOtherColourFollowsTheQuieterDiagonal) {
  EXPECT_EQ(grouping(fourDiagonals(100, 104, 100, 150)).blue(3, 2), 101);
  EXPECT_EQ(grouping(fourDiagonals(100, 150, 100, 104)).blue(3, 2), 101);
}

// quirk: guard-green
TEST_P(PixelGrouping, TheRimTakesItsGreenForAPeak) {
  const auto out = grouping(Frame<uint8_t>(8, 8, 100));
  EXPECT_EQ(out.blue(0, 0), 125);  // (200 - 0 - 100) / 4 + 100
  EXPECT_EQ(out.red(0, 0), 125);
  EXPECT_EQ(out.blue(3, 0), 125);
  EXPECT_EQ(out.red(3, 0), 100);
  EXPECT_EQ(out.green(3, 0), 100);
}

// quirk: ten-bit-limit
TEST_P(PixelGrouping, ComputedSamplesStopAtTenBitsSensedOnesPass) {
  for (unsigned v : {1024u, 4095u, 65535u}) {
    const auto out = grouping(Frame<uint16_t>(8, 8, v));
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) {
        const bool redSite = y % 2 == 0 && x % 2 == 1, blueSite = y % 2 == 1 && x % 2 == 0;
        EXPECT_EQ(out.blue(x, y), blueSite ? v : 1023u);
        EXPECT_EQ(out.green(x, y), redSite || blueSite ? 1023u : v);
        EXPECT_EQ(out.red(x, y), redSite ? v : 1023u);
      }
  }
}

TEST_P(PixelGrouping, ASinglePixelTakesItsColoursFromWhatTheBufferHeld) {
  const auto out = grouping(Frame<uint8_t>(1, 1, 100), 40);
  EXPECT_EQ(out.blue(0, 0), 70);  // (200 - 80) / 4 + 40
  EXPECT_EQ(out.green(0, 0), 100);
  EXPECT_EQ(out.red(0, 0), 70);
}

}  // namespace
}  // namespace vistrel::core::test
