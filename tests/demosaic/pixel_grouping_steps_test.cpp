// Steps of pixel grouping, on single pixels.
#include <gtest/gtest.h>

#include "tests/demosaic/by_name.h"

namespace vistrel::core::test {
namespace {

constexpr unsigned kBlueSite = 0, kGreenBesideBlue = 1, kRedSite = 2, kGreenBesideRed = 3;

// Five by five pixels; rows below and columns to the right of the middle one.
template <class T>
struct Patch {
  T samples[5][5][3] = {};

  T& at(int channel, int row, int column) { return samples[row + 2][column + 2][channel]; }
  T& blue(int row, int column) { return at(0, row, column); }
  T& green(int row, int column) { return at(1, row, column); }
  T& red(int row, int column) { return at(2, row, column); }

  int greenOf(unsigned site) { return calcOneGreen(&blue(0, 0), 15, site); }
};

struct RedBlue {
  int red, blue;
};

RedBlue redBlue(Patch<uint8_t>& patch, unsigned site) {
  uint8_t first = 1, second = 1;
  calcOneRedBlu8(&patch.blue(0, 0), 15, &first, &second, site);
  return {first, second};
}

RedBlue redBlue(Patch<uint16_t>& patch, unsigned site) {
  uint16_t first = 1, second = 1;
  calcOneRedBlu16(&patch.blue(0, 0), 15, &first, &second, site);
  return {first, second};
}

template <class T>
class CalcOneGreen : public ::testing::Test {};
template <class T>
class CalcOneRedBlu : public ::testing::Test {};
using Samples = ::testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(CalcOneGreen, Samples);
TYPED_TEST_SUITE(CalcOneRedBlu, Samples);

// Green above and below 50 and `down`, to the left and right 70 and `right`; the colour is 100.
template <class T>
Patch<T> crossing(int channel, unsigned down, unsigned right, unsigned north, unsigned east,
                  unsigned south, unsigned west) {
  Patch<T> p;
  p.green(-1, 0) = 50;
  p.green(1, 0) = static_cast<T>(down);
  p.green(0, -1) = 70;
  p.green(0, 1) = static_cast<T>(right);
  p.at(channel, 0, 0) = 100;
  p.at(channel, -2, 0) = static_cast<T>(north);
  p.at(channel, 0, 2) = static_cast<T>(east);
  p.at(channel, 2, 0) = static_cast<T>(south);
  p.at(channel, 0, -2) = static_cast<T>(west);
  return p;
}

TYPED_TEST(CalcOneGreen, TakesNorthThenEastOfEqualCosts) {
  for (int channel : {0, 2}) {
    auto north = crossing<TypeParam>(channel, 50, 70, 101, 99, 99, 99);
    EXPECT_EQ(north.greenOf(unsigned(channel)), 49);  // (3 * 50 + 50 + 100 - 101) / 4
    auto east = crossing<TypeParam>(channel, 50, 70, 102, 101, 99, 99);
    EXPECT_EQ(east.greenOf(unsigned(channel)), 69);  // (3 * 70 + 70 + 100 - 101) / 4
  }
}

// quirk: exchanged-directions
TYPED_TEST(CalcOneGreen, ExchangesSouthAndWest) {
  for (int channel : {0, 2}) {
    // Costs: north 9, east 8, south 3, west 2.
    auto west = crossing<TypeParam>(channel, 51, 70, 104, 96, 99, 99);
    EXPECT_EQ(west.greenOf(unsigned(channel)), 51);  // south: (3 * 51 + 50 + 100 - 99) / 4
    // Costs: north 8, east 9, south 2, west 3.
    auto south = crossing<TypeParam>(channel, 50, 71, 104, 96, 99, 99);
    EXPECT_EQ(south.greenOf(unsigned(channel)), 70);  // west: (3 * 70 + 71 + 100 - 99) / 4
    // Costs: north 8, east 8, south 2, west 2.
    auto tie = crossing<TypeParam>(channel, 50, 70, 104, 96, 99, 99);
    EXPECT_EQ(tie.greenOf(unsigned(channel)), 70);  // west: (3 * 70 + 70 + 100 - 99) / 4
  }
}

TYPED_TEST(CalcOneGreen, StopsAtZero) {
  Patch<TypeParam> p;
  p.blue(-2, 0) = p.blue(2, 0) = p.blue(0, 2) = p.blue(0, -2) = 1;
  EXPECT_EQ(p.greenOf(kBlueSite), 0);
}

// quirk: overshoot-to-black
TEST(CalcOneGreen, TurnsAnOvershootOfBytesBlack) {
  auto bright = crossing<uint8_t>(2, 255, 70, 90, 200, 200, 200);
  bright.green(-1, 0) = 255;
  EXPECT_EQ(bright.greenOf(kRedSite), 0);  // 1030 / 4 = 257
  bright.red(-2, 0) = 97;
  EXPECT_EQ(bright.greenOf(kRedSite), 255);  // 1023 / 4
}

TEST(CalcOneGreen, StopsSixteenBitSamplesAtTenBits) {
  auto bright = crossing<uint16_t>(2, 4000, 70, 100, 9000, 9000, 9000);
  bright.green(-1, 0) = 4000;
  EXPECT_EQ(bright.greenOf(kRedSite), 1023);
}

// quirk: cost-ceiling
TEST(CalcOneGreen, LeavesSouthWhereAllCostsAreAbove65535) {
  Patch<uint16_t> p;
  p.red(-2, 0) = p.red(2, 0) = p.red(0, 2) = p.red(0, -2) = 65535;
  p.green(1, 0) = 22000;
  EXPECT_EQ(p.greenOf(kRedSite), 116);  // (3 * 22000 - 65535) / 4; east and west cost least
}

// Along the row green passes from 10 by 20 to 30; across, 20 lies below 50 and 30.
template <class T>
Patch<T> green(int along, int across) {
  Patch<T> p;
  p.green(0, 0) = 20;
  p.green(0, -1) = 10;
  p.green(0, 1) = 30;
  p.green(-1, 0) = 50;
  p.green(1, 0) = 30;
  p.at(along, 0, -1) = 100;
  p.at(along, 0, 1) = 140;
  p.at(across, -1, 0) = 60;
  p.at(across, 1, 0) = 61;
  return p;
}

TYPED_TEST(CalcOneRedBlu, GivesBothColoursAtGreenSites) {
  auto besideRed = green<TypeParam>(2, 0);
  EXPECT_EQ(redBlue(besideRed, kGreenBesideRed).red, 120);
  EXPECT_EQ(redBlue(besideRed, kGreenBesideRed).blue, 50);  // (40 - 80) / 4 + 60.5
  auto besideBlue = green<TypeParam>(0, 2);
  EXPECT_EQ(redBlue(besideBlue, kGreenBesideBlue).blue, 120);
  EXPECT_EQ(redBlue(besideBlue, kGreenBesideBlue).red, 50);
}

// The other colour is 100 above and 101 below on both diagonals. Green ends in 40 on them, passing
// from 10; the costs are 1 + 10 + 20 each.
template <class T>
Patch<T> diagonal(int other) {
  Patch<T> p;
  p.green(0, 0) = 20;
  p.green(-1, -1) = p.green(-1, 1) = 10;
  p.green(1, 1) = p.green(1, -1) = 40;
  p.at(other, -1, -1) = p.at(other, -1, 1) = 100;
  p.at(other, 1, 1) = p.at(other, 1, -1) = 101;
  return p;
}

TYPED_TEST(CalcOneRedBlu, FollowsTheQuieterDiagonalFromAbove) {
  for (int own : {0, 2}) {
    const unsigned site = unsigned(own);
    const auto found = [&](Patch<TypeParam>& p) {
      const RedBlue v = redBlue(p, site);
      EXPECT_EQ(own == 0 ? v.blue : v.red, 0);
      return own == 0 ? v.red : v.blue;
    };
    auto p = diagonal<TypeParam>(2 - own);
    EXPECT_EQ(found(p), 100);  // a tie: 100 + 1 * 10 / 30
    p.at(own, -2, -2) = 1;     // the falling one costs more
    p.at(2 - own, -1, -1) = p.at(2 - own, 1, 1) = 7;
    EXPECT_EQ(found(p), 100);
    p = diagonal<TypeParam>(2 - own);
    p.at(own, 2, -2) = 1;  // the rising one does
    p.at(2 - own, -1, 1) = 7;
    p.at(2 - own, 1, -1) = 8;
    EXPECT_EQ(found(p), 100);
    p.at(own, 2, 2) = 2;  // the falling one again
    EXPECT_EQ(found(p), 7);
  }
}

TYPED_TEST(CalcOneRedBlu, StopsAtTheDepthsLimits) {
  constexpr int top = sizeof(TypeParam) == 1 ? 255 : 1023;
  Patch<TypeParam> peak;
  peak.green(0, 0) = static_cast<TypeParam>(top);
  peak.red(0, -1) = peak.red(0, 1) = static_cast<TypeParam>(top);
  EXPECT_EQ(redBlue(peak, kGreenBesideRed).red, top);  // half as much more
  Patch<TypeParam> valley;
  valley.green(0, -1) = valley.green(0, 1) = static_cast<TypeParam>(top);
  EXPECT_EQ(redBlue(valley, kGreenBesideRed).red, 0);
  peak.blue(-1, -1) = peak.blue(-1, 1) = peak.blue(1, -1) = peak.blue(1, 1) =
      static_cast<TypeParam>(top);
  EXPECT_EQ(redBlue(peak, kRedSite).blue, top);
}

TEST(HueTransit, PassesAsGreenDoes) {
  EXPECT_EQ(HueTransit(10, 20, 30, 100, 140), 120);  // 100 + 800 / 20
  EXPECT_EQ(HueTransit(30, 20, 10, 100, 140), 120);
  EXPECT_EQ(HueTransit(10, 20, 40, 100, 101), 100);
  EXPECT_EQ(HueTransit(10, 20, 40, 101, 100), 101);  // truncated toward the first colour
}

TEST(HueTransit, BendsWhereGreenDoes) {
  EXPECT_EQ(HueTransit(10, 5, 30, 100, 140), 112);  // (10 - 40) / 4 + 120 = 112.5
  EXPECT_EQ(HueTransit(50, 50, 50, 7, 7), 7);
  EXPECT_EQ(HueTransit(10, 10, 30, 100, 100), 95);  // no value between: (20 - 40) / 4 + 100
  EXPECT_EQ(HueTransit(30, 30, 10, 100, 100), 105);
}

TEST(HueTransit, CutsABendTowardZero) {
  EXPECT_EQ(HueTransit(10, 0, 10, 0, 1), -4);  // -5 + 0.5
  EXPECT_EQ(HueTransit(0, 3, 0, 0, 0), 1);     // 1.5
}

TEST(HueTransit, WrapsTheProduct) {
  // 65535 * 40000 - 2^32 = -1673567296, over 65535 -25537 and a rest.
  EXPECT_EQ(HueTransit(0, 40000, 65535, 0, 65535), -25537);
}

}  // namespace
}  // namespace vistrel::core::test
