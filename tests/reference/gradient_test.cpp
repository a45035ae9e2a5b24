// The two gradient algorithms.
#include <gtest/gtest.h>

#include "tests/reference/demosaiced.h"

namespace {

constexpr uint32_t LAROCHE = 3, HAMILTON = 4;

TEST(ReferenceLaroche, KeepsAFlatInsideAndBrightensTheRim) {
  const Demosaiced<uint8_t> out(LAROCHE, GRBG, Mosaic<uint8_t>(8, 6, 100));
  for (int y = 1; y < 5; ++y) {
    for (int x = 1; x < 7; ++x) {
      EXPECT_EQ(out.B(x, y), 100);
      EXPECT_EQ(out.G(x, y), 100);
      EXPECT_EQ(out.R(x, y), 100);
    }
  }
  // A guard pixel has red or blue without green: 100 + ((0 + 100) >> 1).
  EXPECT_EQ(out.B(0, 0), 150);
  EXPECT_EQ(out.R(0, 0), 150);
  // Two of the four diagonals lie in the guard.
  EXPECT_EQ(out.B(3, 0), 150);
}

TEST(ReferenceLaroche, RoundsNegativeSumsDown) {
  Mosaic<uint8_t> frame(8, 8, 100);
  frame.at(2, 3) = 99;  // blue below the green site (2, 2)
  EXPECT_EQ(Demosaiced<uint8_t>(LAROCHE, GRBG, frame).B(2, 2), 99);
}

// The greens above and below the red site (3, 2) become 20 and 100 by smoothing, those beside it
// 60.
Mosaic<uint8_t> unevenGreens() {
  Mosaic<uint8_t> frame(8, 8, 0);
  frame.at(3, 3) = 160;
  frame.at(2, 2) = frame.at(4, 2) = 80;
  return frame;
}

TEST(ReferenceLaroche, LeavesTheAxisWhereTheSensedColourBends) {
  EXPECT_EQ(Demosaiced<uint8_t>(LAROCHE, GRBG, unevenGreens()).G(3, 2), (20 + 100 + 60 + 60) / 4);
  Mosaic<uint8_t> frame = unevenGreens();
  frame.at(3, 0) = 40;  // red two above: dv = 20, dh = 0
  frame.at(4, 2) = 0;
  // (640 + 80) >> 3, (320 + 160) >> 3, (0 + 160) >> 3
  const Demosaiced<uint8_t> out(LAROCHE, GRBG, frame);
  EXPECT_EQ(out.G(3, 3), 90);
  EXPECT_EQ(out.G(3, 2), (60 + 20) >> 1);
  frame.at(3, 0) = 0;
  frame.at(1, 2) = 40;  // red two to the left: dh = 20
  EXPECT_EQ(Demosaiced<uint8_t>(LAROCHE, GRBG, frame).G(3, 2), (10 + 90) >> 1);
}

TEST(ReferenceGradients, HoldComputedSamplesTo1023) {
  for (uint32_t algorithm : {LAROCHE, HAMILTON}) {
    const Demosaiced<uint16_t> out(algorithm, GRBG, Mosaic<uint16_t>(8, 8, 4000));
    EXPECT_EQ(out.R(3, 2), 4000);
    EXPECT_EQ(out.G(2, 2), 4000);
    EXPECT_EQ(out.R(2, 2), 1023);
    EXPECT_EQ(out.B(3, 2), 1023);
    EXPECT_EQ(out.G(3, 2), algorithm == LAROCHE ? 4000 : 1023);
  }
}

TEST(ReferenceHamilton, CorrectsGreenByTheUnsensedChannelThatIsZero) {
  Mosaic<uint8_t> frame = unevenGreens();
  frame.at(3, 2) = 255;  // would add 127 to green if the sensed colour corrected it
  EXPECT_EQ(Demosaiced<uint8_t>(HAMILTON, GRBG, frame).G(3, 2), 60);
}

TEST(ReferenceHamilton, TruncatesTheMeanOfATie) {
  Mosaic<uint8_t> frame(8, 8, 0);
  // Greens round (3, 2) of 8, 8, 9, 9 eighths of which: N = S = (4 * 8 + 18) >> 3 = 6,
  // W = E = (4 * 9 + 16) >> 3 = 6; a seventh in the corner of N lifts it to 7.
  frame.at(3, 1) = frame.at(3, 3) = 8;
  frame.at(2, 2) = frame.at(4, 2) = 9;
  EXPECT_EQ(Demosaiced<uint8_t>(HAMILTON, GRBG, frame).G(3, 2), 6);
  frame.at(2, 0) = frame.at(4, 0) = 3;  // N = (32 + 18 + 6) >> 3 = 7, dv = 1 > dh = 0
  EXPECT_EQ(Demosaiced<uint8_t>(HAMILTON, GRBG, frame).G(3, 2), 6);
}

// Greens of 10 with one of 14 that smooths to 12: 2 * 12 - 10 - 10 = 4, weighted a quarter.
TEST(ReferenceHamilton, WeighsGreenByAQuarterAtGreenSites) {
  Mosaic<uint8_t> frame(8, 8, 10);
  for (uint32_t y = 1; y < 8; y += 2)
    for (uint32_t x = 0; x < 8; x += 2) frame.at(x, y) = 7;
  frame.at(2, 2) = 14;
  EXPECT_EQ(Demosaiced<uint8_t>(HAMILTON, GRBG, frame).B(2, 2), 7 + 1);
  frame.at(2, 2) = 6;
  EXPECT_EQ(Demosaiced<uint8_t>(HAMILTON, GRBG, frame).B(2, 2), 7 - 1);
}

TEST(ReferenceHamilton, StoresNoNegativeValue) {
  Mosaic<uint8_t> frame(8, 8, 0);
  for (uint32_t y = 0; y < 8; ++y)
    for (uint32_t x = 0; x < 8; ++x)
      if ((x + y) % 2 == 0) frame.at(x, y) = 100;
  frame.at(2, 2) = 0;  // its blue would be 0.5 * 0 + 0.25 * (2 * 50 - 200)
  EXPECT_EQ(Demosaiced<uint8_t>(HAMILTON, GRBG, frame).B(2, 2), 0);
}

}  // namespace
