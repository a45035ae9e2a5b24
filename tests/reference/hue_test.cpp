// The constant-hue algorithms.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "tests/reference/demosaic.h"
#include "tests/reference/demosaiced.h"

namespace {

constexpr uint32_t COK = 6, KIMMEL = 7;

template <class T>
void expectFlatInside(const Demosaiced<T>& out, int w, int h, int rim, int value) {
  for (int y = rim; y < h - rim; ++y) {
    for (int x = rim; x < w - rim; ++x) {
      EXPECT_EQ(out.B(x, y), value);
      EXPECT_EQ(out.G(x, y), value);
      EXPECT_EQ(out.R(x, y), value);
    }
  }
}

TEST(ReferenceCok, KeepsAFlatInsideAndDarkensTheRim) {
  expectFlatInside(Demosaiced<uint8_t>(COK, GRBG, Mosaic<uint8_t>(8, 6, 0)), 8, 6, 1, 0);
  const Demosaiced<uint8_t> out(COK, GRBG, Mosaic<uint8_t>(8, 6, 100));
  expectFlatInside(out, 8, 6, 1, 100);
  EXPECT_EQ(out.B(3, 0), 50);  // two of four diagonals have no green
  EXPECT_EQ(out.B(2, 0), 50);
  EXPECT_EQ(out.R(2, 0), 100);
}

// Greens arranged so that both red sites beside the green site (2, 0) get a green of 120:
// (80 + 200 + 2 * 100) >> 2.
template <class T>
Mosaic<T> brightGreen(unsigned scale) {
  Mosaic<T> frame(8, 6, 0);
  const auto set = [&](uint32_t x, uint32_t y, unsigned v) {
    frame.at(x, y) = static_cast<T>(v * scale);
  };
  set(2, 0, 200);
  set(0, 0, 80);
  set(4, 0, 80);
  set(1, 1, 100);
  set(3, 1, 100);
  for (uint32_t x : {0U, 2U, 4U}) set(x, 2, 60);
  set(1, 0, 240);
  set(3, 0, 240);
  return frame;
}

TEST(ReferenceCok, ClampsTheHue) {
  const Demosaiced<uint8_t> out(COK, GRBG, brightGreen<uint8_t>(1));
  EXPECT_EQ(out.G(1, 0), 120);
  EXPECT_EQ(out.G(3, 0), 120);
  EXPECT_EQ(out.R(2, 0), 255);  // 200 * (2 + 2) / 2
  EXPECT_EQ(Demosaiced<uint16_t>(COK, GRBG, brightGreen<uint16_t>(10)).R(2, 0), 1023);
}

// Selects a path of algorithm 7 during a test.
class ReferenceKimmel : public testing::Test {
 protected:
  void SetUp() override { reference::g_bIsSSE = 0; }
  void TearDown() override {
    reference::g_bIsSSE = before_;
    reference::g_pReciprocalRoot = reference::VectorReciprocalRoot;
  }
  const int32_t before_ = reference::g_bIsSSE;
};
// Uses the exact root, so that the numbers below are the same on every processor.
class ReferenceKimmelInFloats : public ReferenceKimmel {
 protected:
  void SetUp() override {
    reference::g_bIsSSE = 1;
    reference::g_pReciprocalRoot = [](float x) { return 1.0f / std::sqrt(x); };
  }
};

// The loss at the rim reaches one pixel further, through the sites that the second pass fills.
TEST_F(ReferenceKimmel, KeepsAFlatInside) {
  for (int value : {0, 1, 100, 255}) {
    const Mosaic<uint8_t> frame(9, 7, static_cast<uint8_t>(value));
    expectFlatInside(Demosaiced<uint8_t>(KIMMEL, GRBG, frame), 9, 7, 2, value);
  }
}

// Greens above and below (3, 2) are 200, beside it 100, and red two to the right differs by 2:
// (100 + (100 + 400) * sqrt 2) / (1 + 3 * sqrt 2) = 153.9, where equal weights give 150.
TEST_F(ReferenceKimmel, WeighsByTheRootOfTheGradient) {
  Mosaic<uint16_t> frame(8, 8, 0);
  frame.at(3, 1) = frame.at(3, 3) = 400;
  for (uint32_t y = 0; y < 8; y += 2)
    for (uint32_t x = 1; x < 8; x += 2) frame.at(x, y) = 12;
  EXPECT_EQ(Demosaiced<uint16_t>(KIMMEL, GRBG, frame).G(3, 2), 150);
  frame.at(5, 2) = 10;
  EXPECT_EQ(Demosaiced<uint16_t>(KIMMEL, GRBG, frame).G(3, 2), 153);
}

TEST_F(ReferenceKimmel, HoldsComputedSamplesTo1023) {
  const Demosaiced<uint16_t> out(KIMMEL, GRBG, Mosaic<uint16_t>(8, 8, 4000));
  EXPECT_EQ(out.G(2, 2), 4000);
  EXPECT_EQ(out.G(3, 2), 1023);
  EXPECT_EQ(out.R(3, 2), 4000);
  EXPECT_EQ(out.R(2, 2), 1023);
}

// A neighbour without green has the hue 0 and keeps its weight. On a flat rim, two of four
// diagonals are such neighbours, and all weights are 1.
TEST_F(ReferenceKimmel, CountsTheWeightOfANeighbourWithoutGreen) {
  const Demosaiced<uint8_t> out(KIMMEL, GRBG, Mosaic<uint8_t>(8, 8, 100));
  EXPECT_EQ(out.B(3, 0), 50);
}

Mosaic<uint8_t> noise(uint32_t w, uint32_t h, uint32_t low, uint32_t range) {
  Mosaic<uint8_t> frame(w, h, 0);
  uint32_t state = 12345;
  for (uint8_t& sample : frame.samples) {
    state = state * 1664525 + 1013904223;
    sample = static_cast<uint8_t>(low + (state >> 16) % range);
  }
  return frame;
}

void expectOneCodeApart(uint32_t nBayer, const Mosaic<uint8_t>& frame) {
  reference::g_bIsSSE = 0;
  const Demosaiced<uint8_t> wide(KIMMEL, nBayer, frame);
  reference::g_bIsSSE = 1;
  const Demosaiced<uint8_t> narrow(KIMMEL, nBayer, frame);
  for (int y = 0; y < static_cast<int>(frame.h); ++y) {
    for (int x = 0; x < static_cast<int>(frame.w); ++x) {
      EXPECT_LE(std::abs(wide.B(x, y) - narrow.B(x, y)), 1) << x << ' ' << y;
      EXPECT_LE(std::abs(wide.G(x, y) - narrow.G(x, y)), 1) << x << ' ' << y;
      EXPECT_LE(std::abs(wide.R(x, y) - narrow.R(x, y)), 1) << x << ' ' << y;
    }
  }
}

TEST_F(ReferenceKimmelInFloats, AgreesToOneCodeInPhase) {
  reference::g_pReciprocalRoot = reference::VectorReciprocalRoot;
  expectOneCodeApart(GRBG, noise(20, 11, 60, 60));
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer) expectOneCodeApart(nBayer, noise(7, 9, 60, 60));
}

TEST_F(ReferenceKimmelInFloats, TakesTheRootItIsGiven) {
  Mosaic<uint16_t> frame(8, 8, 0);
  frame.at(3, 1) = frame.at(3, 3) = 400;
  EXPECT_EQ(Demosaiced<uint16_t>(KIMMEL, GRBG, frame).G(3, 2), 150);
  reference::g_pReciprocalRoot = [](float x) { return 1.0f / x; };
  frame.at(5, 2) = 2;  // (100 / 2 + 500) / 3.5
  EXPECT_EQ(Demosaiced<uint16_t>(KIMMEL, GRBG, frame).G(3, 2), 157);
}

// For 16-bit samples, whole blocks of eight columns ignore the column bit of the phase: the sensed
// sites there never get a green. RGGB: red at even rows and columns.
TEST_F(ReferenceKimmelInFloats, LosesThePhaseInBlocksOfSixteenBits) {
  const Demosaiced<uint16_t> out(KIMMEL, RGGB, Mosaic<uint16_t>(12, 6, 500));
  for (int x = 0; x < 8; x += 2) EXPECT_EQ(out.G(x, 2), 0) << x;
  EXPECT_EQ(out.G(8, 2), 499);  // (1000 + 500 / 250) / (2 + 2 / 250): its left neighbour is black
  EXPECT_EQ(out.G(10, 2), 500);
  const Demosaiced<uint8_t> bytes(KIMMEL, RGGB, Mosaic<uint8_t>(12, 6, 100));
  for (int x = 0; x < 12; x += 2) EXPECT_EQ(bytes.G(x, 2), 100) << x;
}

// With an odd width, the blocks of bytes are out of phase as well.
TEST_F(ReferenceKimmelInFloats, LosesThePhaseOfOddWidths) {
  const Demosaiced<uint8_t> out(KIMMEL, GRBG, Mosaic<uint8_t>(9, 6, 100));
  for (int x = 1; x < 8; x += 2) EXPECT_EQ(out.G(x, 2), 0) << x;
}

// A hue is limited to the green it was divided by: 50 / 1 counts as 1. Only the tail is exempt,
// when red and blue sites get each other's colour.
TEST_F(ReferenceKimmelInFloats, BoundsTheHueOfDarkPixels) {
  const auto dark = [](uint32_t w) {
    Mosaic<uint8_t> frame(w, 6, 50);
    for (uint32_t y = 0; y < 6; ++y)
      for (uint32_t x = y % 2; x < w; x += 2) frame.at(x, y) = 1;
    return frame;
  };
  const Demosaiced<uint8_t> block(KIMMEL, GRBG, dark(8));
  EXPECT_EQ(block.B(3, 2), 1);
  EXPECT_EQ(block.R(2, 2), 1);
  const Demosaiced<uint8_t> tail(KIMMEL, GRBG, dark(7));
  EXPECT_EQ(tail.B(3, 2), 50);
  EXPECT_EQ(tail.R(2, 2), 1);
}

// Binned 2x2, region 8 by 3: row 1 of the walk begins 12 pixels after row 0, in buffer row 0.
TEST_F(ReferenceKimmelInFloats, WalksAtThePitchOfAnUnbinnedBuffer) {
  const Demosaiced<uint8_t> out(KIMMEL, GRBG, Mosaic<uint8_t>(16, 6, 100), 1);
  EXPECT_EQ(out.G(3, 0), 100);
  EXPECT_EQ(out.G(9, 0), 0);  // columns 8 .. 11 lie between the two rows
  EXPECT_EQ(out.G(11, 0), 0);
  EXPECT_EQ(out.G(12, 0), 0);  // row 1 takes this green site for a blue one without green around it
  EXPECT_EQ(out.R(13, 0), 0);  // and this red one for a green one without red around it
  for (int y = 2; y < 6; ++y)
    for (int x = 0; x < 16; ++x) EXPECT_EQ(out.R(x, y) * out.G(x, y) * out.B(x, y), 0);
}

}  // namespace
