// Constant hue: green as a mean, colours as ratios to green, and the rim.
#include "tests/demosaic/demosaiced.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Cok);

template <class T>
Demosaiced<T> cok(const Frame<T>& frame, unsigned before = 0xEE) {
  return {ImageColorHueCok, BAYER_GRBG, frame, before};
}

// Rows of G R and B G: green at (2, 0) and (1, 1), red at (1, 0), blue at (0, 1).
template <class T>
Frame<T> byColour(unsigned blue, unsigned green, unsigned red) {
  Frame<T> frame(8, 6, green);
  for (uint32_t y = 0; y < 6; y += 2)
    for (uint32_t x = 0; x < 8; x += 2) {
      frame.at(x + 1, y) = static_cast<T>(red);
      frame.at(x, y + 1) = static_cast<T>(blue);
    }
  return frame;
}

// Where a colour is not sensed; green everywhere.
template <class T>
void expectInside(const Demosaiced<T>& out, int blue, int green, int red) {
  for (int y = 1; y < 5; ++y)
    for (int x = 1; x < 7; ++x) {
      EXPECT_EQ(out.green(x, y), green);
      if (y % 2 == 0 || x % 2 == 1) {
        EXPECT_EQ(out.blue(x, y), blue);
      }
      if (y % 2 == 1 || x % 2 == 0) {
        EXPECT_EQ(out.red(x, y), red);
      }
    }
}

TEST_P(Cok, AFlatFrameStaysFlatInside) {
  for (unsigned v : {0u, 1u, 3u, 100u, 255u}) {
    expectInside(cok(Frame<uint8_t>(8, 6, v)), int(v), int(v), int(v));
    expectInside(cok(Frame<uint16_t>(8, 6, 4 * v)), int(4 * v), int(4 * v), int(4 * v));
  }
}

TEST_P(Cok, AFrameOfOneHueKeepsIt) {
  expectInside(cok(byColour<uint8_t>(32, 64, 128)), 32, 64, 128);
  expectInside(cok(byColour<uint16_t>(128, 512, 768)), 128, 512, 768);
}

// quirk: guard-green
TEST_P(Cok, TheRimLosesWhatNeighboursBeyondItDoNotGive) {
  const auto out = cok(Frame<uint8_t>(8, 6, 100));
  EXPECT_EQ(out.green(3, 0), 100);
  EXPECT_EQ(out.blue(3, 0), 50);  // two diagonals of four
  EXPECT_EQ(out.blue(2, 0), 50);  // one of two
  EXPECT_EQ(out.red(2, 0), 100);
  EXPECT_EQ(out.red(0, 1), 50);
  EXPECT_EQ(out.red(0, 5), 25);  // one diagonal of four
  EXPECT_EQ(out.blue(7, 0), 25);
  EXPECT_EQ(out.blue(7, 5), 50);
  EXPECT_EQ(out.red(7, 5), 50);
}

TEST_P(Cok, GreenIsTheTruncatedMeanOfFour) {
  Frame<uint8_t> frame(8, 6, 0);
  frame.at(0, 0) = 9;
  frame.at(2, 0) = 6;
  frame.at(1, 1) = 8;
  // Smoothed, (1, 1) is (32 + 9 + 6) / 8 = 5, and the guard above (1, 0) repeats it.
  EXPECT_EQ(cok(frame).green(1, 0), (9 + 6 + 5 + 5) / 4);
}

// Green is 0 at the red site (1, 0), 50 at (3, 0), 22 at (1, 2), 60 at (3, 2) and 22 at the blue
// site (2, 1) in their middle.
TEST_P(Cok, ADiagonalWithoutGreenCountsAsZero) {
  Frame<uint8_t> frame(8, 6, 80);
  frame.at(0, 0) = frame.at(2, 0) = frame.at(1, 1) = frame.at(0, 2) = frame.at(2, 2) = 0;
  frame.at(3, 0) = 100;
  frame.at(1, 2) = 44;
  frame.at(3, 2) = 120;
  for (uint8_t red : {uint8_t{0}, uint8_t{255}}) {
    frame.at(1, 0) = red;
    const auto out = cok(frame);
    EXPECT_EQ(out.green(1, 0), 0);
    EXPECT_EQ(out.green(2, 1), 22);
    EXPECT_EQ(out.red(2, 1), 33);  // 22 * (2 + 2 + 2) / 4; all four hues would give 44
  }
}

// Green is 120 times scale at both red sites beside the green site (2, 0), which has 200.
template <class T>
Frame<T> brightGreen(unsigned scale) {
  Frame<T> frame(8, 6, 60 * scale);
  frame.at(0, 0) = frame.at(4, 0) = static_cast<T>(80 * scale);
  frame.at(1, 1) = frame.at(3, 1) = static_cast<T>(100 * scale);
  frame.at(2, 0) = static_cast<T>(200 * scale);
  frame.at(1, 0) = frame.at(3, 0) = static_cast<T>(240 * scale);
  return frame;
}

TEST_P(Cok, ABrightGreenTimesAHueAboveOneIsClamped) {
  const auto bytes = cok(brightGreen<uint8_t>(1));
  EXPECT_EQ(bytes.green(1, 0), 120);
  EXPECT_EQ(bytes.green(3, 0), 120);
  EXPECT_EQ(bytes.red(2, 0), 255);  // 200 * 4 / 2
  const auto samples16 = cok(brightGreen<uint16_t>(10));
  EXPECT_EQ(samples16.green(1, 0), 1200);
  EXPECT_EQ(samples16.red(2, 0), 1023);  // 2000 * 4 / 2
  EXPECT_EQ(cok(brightGreen<uint16_t>(2)).red(2, 0), 800);
}

// quirk: ten-bit-limit
TEST_P(Cok, ComputedColoursStopAtTenBitsSensedOnesAndGreenPass) {
  for (unsigned v : {1024u, 4000u, 65535u}) {
    const auto out = cok(Frame<uint16_t>(8, 6, v));
    EXPECT_EQ(out.red(3, 2), int(v));
    EXPECT_EQ(out.green(3, 2), int(v));
    EXPECT_EQ(out.blue(3, 2), 1023);
    EXPECT_EQ(out.blue(2, 2), 1023);
    EXPECT_EQ(out.green(2, 2), int(v));
    EXPECT_EQ(out.red(2, 2), 1023);
  }
}

// quirk: hue-loses-one
TEST_P(Cok, AHueIsRoundedBeforeGreenMultipliesIt) {
  // The double nearest to 1 / 49 is below it, and 49 times that below 1.
  expectInside(cok(byColour<uint8_t>(1, 49, 1)), 0, 49, 0);
  expectInside(cok(byColour<uint16_t>(1, 49, 1)), 0, 49, 0);
  expectInside(cok(byColour<uint8_t>(1, 48, 1)), 1, 48, 1);
}

TEST_P(Cok, ASinglePixelTakesItsColoursFromWhatTheBufferHeld) {
  const auto stale = cok(Frame<uint8_t>(1, 1, 100), 40);
  EXPECT_EQ(stale.blue(0, 0), 100);  // 100 * (40 / 40 + 40 / 40) / 2
  EXPECT_EQ(stale.green(0, 0), 100);
  EXPECT_EQ(stale.red(0, 0), 100);
  const auto black = cok(Frame<uint8_t>(1, 1, 100), 0);
  EXPECT_EQ(black.blue(0, 0), 0);
  EXPECT_EQ(black.red(0, 0), 0);
}

}  // namespace
}  // namespace vistrel::core::test
