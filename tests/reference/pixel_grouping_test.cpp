#include <gtest/gtest.h>

#include <vector>

#include "tests/reference/demosaic.h"
#include "tests/reference/demosaiced.h"

namespace {

// Five by five pixels around a red site; (r, c): r rows down, c columns to the right.
template <class T>
struct Patch {
  std::vector<T> samples = std::vector<T>(75, 0);
  T& at(int channel, int r, int c) {
    return samples[static_cast<size_t>((r + 2) * 15 + 3 * (c + 2) + channel)];
  }
  T& G(int r, int c) { return at(1, r, c); }
  T& K(int r, int c) { return at(2, r, c); }
  int green() { return reference::calcOneGreen(&at(0, 0, 0), 15, 2); }
};

TEST(ReferencePixelGrouping, KeepsAFlatInside) {
  const Demosaiced<uint8_t> out(8, GRBG, Mosaic<uint8_t>(9, 7, 90));
  for (int y = 1; y < 6; ++y) {
    for (int x = 1; x < 8; ++x) {
      EXPECT_EQ(out.B(x, y), 90);
      EXPECT_EQ(out.G(x, y), 90);
      EXPECT_EQ(out.R(x, y), 90);
    }
  }
}

// 3 * 255 + 255 + 10 = 1030; 1030 >> 2 = 257, limited to 256, which a byte stores as 0.
TEST(ReferencePixelGrouping, TurnsAnOvershootOfBytesBlack) {
  Patch<uint8_t> patch;
  patch.G(-1, 0) = patch.G(1, 0) = 255;
  patch.K(0, 0) = 20;
  patch.K(-2, 0) = 10;
  patch.K(2, 0) = patch.K(0, 2) = patch.K(0, -2) = 200;
  EXPECT_EQ(patch.green(), 0);
  patch.K(0, 0) = 11;  // 1021 >> 2
  EXPECT_EQ(patch.green(), 255);
}

TEST(ReferencePixelGrouping, ExchangesSouthAndWest) {
  Patch<uint8_t> patch;
  patch.K(0, 0) = 100;
  patch.K(-2, 0) = patch.K(0, 2) = 96;
  patch.K(2, 0) = patch.K(0, -2) = 99;
  patch.G(-1, 0) = 50;
  patch.G(1, 0) = 51;
  patch.G(0, -1) = patch.G(0, 1) = 70;
  // Costs: north 9, east 8, south 3, west 2: the south formula.
  EXPECT_EQ(patch.green(), (3 * 51 + 50 + 100 - 99) >> 2);
  patch.G(1, 0) = 50;
  patch.G(0, 1) = 71;
  // Costs: north 8, east 9, south 2, west 3: the west formula.
  EXPECT_EQ(patch.green(), (3 * 70 + 71 + 100 - 99) >> 2);
  patch.G(0, 1) = 70;
  // Costs: north 8, east 8, south 2, west 2: a tie takes the west formula.
  EXPECT_EQ(patch.green(), (3 * 70 + 70 + 100 - 99) >> 2);
}

// All costs lie above 65535, east and west lowest: no direction reaches the minimum, and the
// south formula gives (3 * 22000 - 65535) >> 2. North and east would give less than 0.
TEST(ReferencePixelGrouping, StartsTheMinimumAt65535) {
  Patch<uint16_t> patch;
  patch.K(-2, 0) = patch.K(2, 0) = patch.K(0, 2) = patch.K(0, -2) = 65535;
  patch.G(1, 0) = 22000;
  EXPECT_EQ(patch.green(), 116);
}

// Blue 40 and 60 on one diagonal, 60 and 40 on the other, green even along neither: a tie takes
// the diagonal that runs up to the right, on which green ends in 30.
TEST(ReferencePixelGrouping, TakesTheRisingDiagonalOnATie) {
  Patch<uint8_t> patch;
  patch.G(0, 0) = 20;
  patch.G(-1, 1) = 10;
  patch.G(1, -1) = 30;
  patch.G(-1, -1) = patch.G(1, 1) = 10;  // both diagonals differ by 10 and 10 from the middle
  patch.at(0, -1, 1) = patch.at(0, -1, -1) = 40;
  patch.at(0, 1, -1) = patch.at(0, 1, 1) = 60;
  uint8_t red, blue;
  const auto run = [&] {
    reference::calcOneRedBlu8(&patch.at(0, 0, 0), 15, &red, &blue, 2);
    return int{blue};
  };
  EXPECT_EQ(run(), 40 + 20 * 10 / 20);
  EXPECT_EQ(red, 0);
  patch.K(-2, 2) = 1;  // now the falling diagonal is quieter: an extreme, 20 / 4 + 50
  EXPECT_EQ(run(), 55);
}

TEST(ReferencePixelGrouping, HoldsComputedSamplesTo1023) {
  const Demosaiced<uint16_t> out(8, GRBG, Mosaic<uint16_t>(8, 8, 4000));
  EXPECT_EQ(out.G(2, 2), 4000);
  EXPECT_EQ(out.G(3, 2), 1023);
  EXPECT_EQ(out.R(3, 2), 4000);
  EXPECT_EQ(out.R(2, 2), 1023);
  EXPECT_EQ(out.B(3, 2), 1023);
}

TEST(ReferenceHueTransit, InterpolatesAlongGreen) {
  EXPECT_EQ(reference::HueTransit(10, 20, 30, 100, 140), 120);
  EXPECT_EQ(reference::HueTransit(30, 20, 10, 140, 100), 120);
  EXPECT_EQ(reference::HueTransit(0, 40000, 65535, 0, 65535), -25537);  // the product wraps
}

TEST(ReferenceHueTransit, AddsTheBendOfGreenAtAnExtreme) {
  EXPECT_EQ(reference::HueTransit(50, 50, 50, 7, 7), 7);
  EXPECT_EQ(reference::HueTransit(10, 30, 10, 100, 101), 110);  // 40 / 4 + 100.5
  EXPECT_EQ(reference::HueTransit(10, 0, 10, 0, 1), -4);        // -5 + 0.5, truncated toward zero
}

}  // namespace
