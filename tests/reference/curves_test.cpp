#include "tests/reference/curves.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

std::vector<unsigned short> predefined(int nCurve, int nInBits, int nOutBits) {
  std::vector<unsigned short> table(1U << nInBits, 40);
  reference::GeneratePredefinedLut(nCurve, nInBits, nOutBits, table.data());
  return table;
}

std::vector<int> at(const std::vector<unsigned short>& table, std::vector<int> places) {
  for (int& place : places) place = table[place];
  return places;
}

TEST(ReferenceCurves, HaveTheirTurningPoints) {
  EXPECT_THAT(at(predefined(2, 8, 8), {0, 31, 32, 191, 192, 255}),
              ElementsAre(0, 62, 64, 223, 224, 255));
  EXPECT_THAT(at(predefined(4, 8, 8), {15, 16, 32, 127, 128}), ElementsAre(60, 64, 96, 191, 192));
  EXPECT_THAT(at(predefined(5, 8, 8), {63, 64, 128, 255}), ElementsAre(31, 32, 96, 254));
  EXPECT_THAT(at(predefined(5, 10, 8), {128, 256, 512, 768}), ElementsAre(16, 32, 96, 176));
  EXPECT_THAT(at(predefined(6, 10, 8), {0, 81, 204, 409, 512, 655, 768, 880, 972, 1023}),
              ElementsAre(0, 10, 33, 102, 152, 215, 240, 250, 254, 255));
}

TEST(ReferenceCurves, ShiftExceptAtEightBits) {
  EXPECT_EQ(predefined(2, 8, 4), predefined(2, 8, 8));
  EXPECT_EQ(predefined(2, 10, 8)[1023], 255);
  EXPECT_EQ(predefined(0, 8, 8)[7], 40);
  EXPECT_EQ(predefined(0, 10, 8)[7], 10);
}

TEST(ReferenceCurves, GammaOfOneIsTheLine) {
  std::vector<unsigned short> table(256, 7777);
  reference::GenerateGammaLut(10, 10, 50, 200, 8, 8, table.data());
  for (unsigned i = 0; i < 255; ++i) EXPECT_EQ(table[i], i);
  EXPECT_EQ(table[255], 7777);
}

TEST(ReferenceSolvers, TellSingularFromZero) {
  int index[3], flag = 7;
  double identity[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  EXPECT_EQ(reference::LUDecomp(identity, 3, index, &flag), 1);
  EXPECT_THAT(index, ElementsAre(0, 1, 2));
  EXPECT_THAT(identity, ElementsAre(1, 0, 0, 0, 1, 0, 0, 0, 1));
  EXPECT_EQ(flag, 0);
  double zeroRow[4] = {1, 2, 0, 0};
  EXPECT_EQ(reference::LUDecomp(zeroRow, 2, index, &flag), 0);
  EXPECT_EQ(flag, 0);
  double equalRows[4] = {1, 2, 1, 2};
  EXPECT_EQ(reference::LUDecomp(equalRows, 2, index, &flag), 1);
  EXPECT_EQ(flag, 1);
}

TEST(ReferenceSolvers, FindTheSquare) {
  double x[5] = {0, 1, 2, 3, 4}, y[5] = {0, 1, 4, 9, 16}, c[5] = {};
  ASSERT_EQ(reference::Resolve4thOrderPolynomium(x, y, c), 1);
  for (int k = 0; k < 5; ++k) EXPECT_THAT(c[k], DoubleNear(k == 2 ? 1 : 0, 1e-12));
}

TEST(ReferenceSolvers, InvertInPlace) {
  double ones[16], m[16] = {0, 2, 0, 0, 4, 0, 0, 0, 0, 0, 0, 1, 0, 0, 8, 0};
  std::fill(std::begin(ones), std::end(ones), 1.0);
  EXPECT_EQ(reference::Invert4x4Matrix(ones, ones), 0);
  ASSERT_EQ(reference::Invert4x4Matrix(m, m), 1);
  EXPECT_THAT(m, ElementsAre(0, .25, 0, 0, .5, 0, 0, 0, 0, 0, 0, .125, 0, 0, 1, 0));
}

}  // namespace
