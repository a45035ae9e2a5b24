// The predefined curves, the straight line and the points of an editor.
#include "vistrel/tone_curves.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "tests/curves/natural_spline.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

using Table = std::vector<unsigned short>;

constexpr unsigned short kBefore = 40;

Table predefined(int nCurve, int nInBits, int nOutBits) {
  Table table(size_t{1} << nInBits, kBefore);
  GeneratePredefinedLut(nCurve, nInBits, nOutBits, table.data());
  return table;
}

Table at(const Table& table, const std::vector<size_t>& places) {
  Table entries;
  for (size_t place : places) entries.push_back(table[place]);
  return entries;
}

Table shifted(Table table, unsigned count) {
  for (unsigned short& entry : table) entry = static_cast<unsigned short>(entry >> count);
  return table;
}

TEST(Curve2, TurnsAtAnEighthAndThreeQuarters) {
  EXPECT_THAT(at(predefined(2, 8, 8), {0, 31, 32, 160, 191, 192, 255}),
              ElementsAre(0, 62, 64, 192, 223, 224, 255));
}

TEST(Curve3, TurnsAtThreeSixteenthsAndFiveEighths) {
  EXPECT_THAT(at(predefined(3, 8, 8), {0, 47, 48, 159, 160, 255}),
              ElementsAre(0, 94, 96, 207, 208, 255));
}

TEST(Curve4, TurnsAtASixteenthAnEighthAndAHalf) {
  EXPECT_THAT(at(predefined(4, 8, 8), {15, 16, 32, 127, 128}), ElementsAre(60, 64, 96, 191, 192));
}

TEST(Curve5, TurnsAtAQuarterAndAHalf) {
  EXPECT_THAT(at(predefined(5, 8, 8), {63, 64, 128, 255}), ElementsAre(31, 32, 96, 254));
  EXPECT_THAT(at(predefined(5, 10, 8), {128, 256, 512, 768}), ElementsAre(16, 32, 96, 176));
}

TEST(StraightCurves, ReachFullScaleExceptTheFifth) {
  for (int curve : {2, 3, 4}) {
    EXPECT_EQ(predefined(curve, 8, 8).back(), 255) << curve;
    EXPECT_EQ(predefined(curve, 10, 10).back(), 1023) << curve;
  }
  EXPECT_EQ(predefined(5, 8, 8).back(), 254);
  EXPECT_EQ(predefined(5, 10, 10).back(), 1022);
}

// Where the pieces' formulae are multiples of the table's size, a larger table is the same curve.
TEST(StraightCurves, ScaleWithTheInput) {
  for (int curve : {2, 3, 4, 5}) {
    const Table small = predefined(curve, 8, 8), large = predefined(curve, 12, 12);
    for (size_t i = 0; i < 256; i += 4)
      EXPECT_EQ(large[16 * i], 16 * small[i]) << curve << ", " << i;
  }
}

// quirk: eight-bit-tables-unshifted
TEST(StraightCurves, OfEightBitsKeepTheirScale) {
  for (int curve : {2, 3, 4, 5}) EXPECT_EQ(predefined(curve, 8, 4), predefined(curve, 8, 8));
}

TEST(StraightCurves, OfOtherDepthsAreShiftedToTheOutput) {
  for (int curve : {2, 3, 4, 5}) {
    EXPECT_EQ(predefined(curve, 10, 8), shifted(predefined(curve, 10, 10), 2));
    EXPECT_EQ(predefined(curve, 12, 7), shifted(predefined(curve, 12, 12), 5));
    EXPECT_EQ(predefined(curve, 7, 4), shifted(predefined(curve, 7, 7), 3));
  }
}

TEST(StraightCurves, AreNotShiftedUp) {
  for (int curve : {2, 3, 4, 5}) EXPECT_EQ(predefined(curve, 10, 12), predefined(curve, 10, 10));
}

TEST(StraightCurves, CountTheShiftModulo32) {
  EXPECT_EQ(predefined(2, 10, 10 - 32), predefined(2, 10, 10));
  EXPECT_EQ(predefined(2, 10, 10 - 33), shifted(predefined(2, 10, 10), 1));
}

TEST(UnknownCurves, ComputeNoEntryButShift) {
  for (int curve : {0, 1, 7, 100, -1, -6}) {
    EXPECT_THAT(predefined(curve, 8, 8), Each(kBefore)) << curve;
    EXPECT_THAT(predefined(curve, 8, 4), Each(kBefore)) << curve;
    EXPECT_THAT(predefined(curve, 10, 8), Each(kBefore / 4)) << curve;
    EXPECT_THAT(predefined(curve, 10, 10), Each(kBefore)) << curve;
    EXPECT_THAT(predefined(curve, 10, 12), Each(kBefore)) << curve;
  }
}

TEST(Curve6, HasItsTenEntries) {
  EXPECT_THAT(at(predefined(6, 10, 8), {0, 81, 204, 409, 512, 655, 768, 880, 972, 1023}),
              ElementsAre(0, 10, 33, 102, 152, 215, 240, 250, 254, 255));
}

TEST(Curve6, NeverFalls) {
  for (int bits : {8, 10, 12, 14}) {
    const Table table = predefined(6, bits, 8);
    EXPECT_TRUE(std::is_sorted(table.begin(), table.end())) << bits;
  }
}

// quirk: spacing-two-in-row-four
TEST(Curve6, DiffersFromTheNaturalSplineInFortyEntries) {
  const int percent[] = {0, 8, 40, 64, 86, 100};
  const std::vector<double> x = {0, 0.08, 0.4, 0.64, 0.86, 1}, y = {0, 0.04, 0.4, 0.84, 0.98, 1};
  const NaturalSpline natural(x, y);
  const Table table = predefined(6, 10, 8);
  int differing = 0;
  for (size_t k = 0; k < 5; ++k) {
    const int begin = percent[k] * 1024 / 100, end = percent[k + 1] * 1024 / 100;
    for (int i = begin; i < end; ++i)
      differing +=
          table[i] != static_cast<int>(natural.at(k, x[k] + (i - begin) / 1024.0) * 1024) >> 2;
  }
  EXPECT_EQ(differing, 40);
}

TEST(Curve6, IsShiftedAtEightBitsToo) {
  EXPECT_EQ(predefined(6, 8, 4), shifted(predefined(6, 8, 8), 4));
  EXPECT_NE(predefined(6, 8, 4), predefined(6, 8, 8));
}

TEST(Curve6, ShiftsByACountModulo32WhenTheOutputIsDeeper) {
  EXPECT_THAT(predefined(6, 10, 11), Each(0));  // by 31
  EXPECT_EQ(predefined(6, 10, 10 - 32), predefined(6, 10, 10));
}

Table unity(int nInBits, int nOutBits, size_t entries) {
  Table table(entries, kBefore);
  UnityLut(nInBits, nOutBits, table.data());
  return table;
}

Table line(size_t entries) {
  Table table(entries);
  std::iota(table.begin(), table.end(), static_cast<unsigned short>(0));
  return table;
}

TEST(UnityLut, IsALine) {
  EXPECT_EQ(unity(12, 8, 4096), shifted(line(4096), 4));
  EXPECT_EQ(unity(12, 8, 4096)[4095], 255);
  EXPECT_EQ(unity(8, 8, 256), line(256));
}

TEST(UnityLut, CountsTheShiftModulo32) {
  EXPECT_THAT(unity(8, 10, 256), Each(0));  // by 30
  EXPECT_EQ(unity(12, 12 - 32, 4096), line(4096));
  EXPECT_EQ(unity(12, 11 - 32, 4096), shifted(line(4096), 1));
}

TEST(UnityLut, CountsTheInputBitsModulo32) {
  EXPECT_THAT(unity(34, 34, 5), ElementsAre(0, 1, 2, 3, kBefore));
}

TEST(UnityLut, WritesNothingForATableBelowOneEntry) {
  EXPECT_THAT(unity(31, 31, 4), Each(kBefore));
}

TEST(ResetLut, WritesAsManyZerosAsAsked) {
  Table table(4, kBefore);
  ResetLut(table.data(), 3);
  EXPECT_THAT(table, ElementsAre(0, 0, 0, kBefore));
}

TEST(ResetLut, WritesNothingForNoEntries) {
  Table table(4, kBefore);
  ResetLut(table.data(), 0);
  ResetLut(table.data(), -3);
  EXPECT_THAT(table, Each(kBefore));
}

struct Points {
  int curve;
  std::vector<int> x, y;
};
const Points kPoints[] = {
    {2, {0, 12, 37, 56, 75, 100}, {0, 24, 50, 69, 87, 100}},
    {3, {0, 19, 33, 48, 62, 100}, {0, 38, 51, 66, 81, 100}},
    {4, {0, 6, 12, 50, 75, 100}, {0, 24, 37, 75, 87, 100}},
    {5, {0, 25, 50, 65, 85, 100}, {0, 12, 37, 56, 81, 100}},
    {6, {0, 8, 40, 64, 86, 100}, {0, 4, 40, 84, 98, 100}},
    {0, {0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}},
    {1, {0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}},
    {7, {0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}},
    {-2147483647 - 1, {0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}},
    {2147483647, {0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}},
};

TEST(NormalizePredefinedLutPoints, HandsOutThePointsOfEachCurve) {
  for (const Points& points : kPoints) {
    int x[6], y[6];
    NormalizePredefinedLutPoints(points.curve, x, y);
    EXPECT_THAT(x, ElementsAreArray(points.x)) << points.curve;
    EXPECT_THAT(y, ElementsAreArray(points.y)) << points.curve;
  }
}

}  // namespace
}  // namespace vistrel::core::test
