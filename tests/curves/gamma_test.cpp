// Gamma tables. Where gamma is 2, 1/2 or 3/2 an entry is the root or the quotient of integers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "vistrel/tone_curves.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

constexpr unsigned short kUnset = 7777;
constexpr int kAll = 1 << 20;  // a ramp that the table does not reach

struct Gamma {
  int low, high, rampStart, rampEnd;
};

std::vector<unsigned short> gammaTable(Gamma g, int nInBits, int nOutBits) {
  std::vector<unsigned short> table(size_t{1} << nInBits, kUnset);
  GenerateGammaLut(g.low, g.high, g.rampStart, g.rampEnd, nInBits, nOutBits, table.data());
  return table;
}

int rootOf(int square) {
  int root = 0;
  while ((root + 1) * (root + 1) <= square) ++root;
  return root;
}

TEST(Gamma, OfOneIsTheLine) {
  const auto table = gammaTable({10, 10, 50, 200}, 8, 8);
  for (size_t i = 0; i < 255; ++i) EXPECT_EQ(table[i], i);
}

// quirk: gamma-last-entry
TEST(Gamma, LeavesTheLastEntryAlone) {
  EXPECT_EQ(gammaTable({10, 10, 50, 200}, 8, 8)[255], kUnset);
  EXPECT_EQ(gammaTable({22, 18, 50, 200}, 10, 8)[1023], kUnset);
  EXPECT_EQ(gammaTable({22, 18, 50, 200}, 8, 10)[255], kUnset);
}

TEST(Gamma, OfTwoIsTheSquareRoot) {
  for (const Gamma& g : {Gamma{20, 99, kAll, kAll}, Gamma{99, 20, 0, 0}, Gamma{99, 20, -9, -5}}) {
    const auto table = gammaTable(g, 8, 8);
    for (int i = 0; i < 255; ++i) EXPECT_EQ(table[i], rootOf(255 * i)) << i;
  }
}

TEST(Gamma, OfAHalfIsTheSquare) {
  const auto table = gammaTable({5, 5, 0, 0}, 8, 8);
  for (int i = 0; i < 255; ++i) EXPECT_EQ(table[i], i * i / 255) << i;
}

TEST(Gamma, MovesFromLowToHighBetweenTheEndsOfTheRamp) {
  const auto table = gammaTable({10, 20, 100, 200}, 8, 8);
  for (int i = 0; i <= 100; ++i) EXPECT_EQ(table[i], i);
  EXPECT_EQ(table[150], 179);  // the cube root of 150 * 150 * 255
  for (int i = 200; i < 255; ++i) EXPECT_EQ(table[i], rootOf(255 * i)) << i;
  for (int i = 101; i < 200; ++i) {
    EXPECT_GE(table[i], i) << i;
    EXPECT_LE(table[i], rootOf(255 * i)) << i;
  }
}

TEST(Gamma, NeedsNoRampBetweenLowAndHigh) {
  const auto table = gammaTable({5, 20, 128, 128}, 8, 8);
  EXPECT_EQ(table[127], 127 * 127 / 255);
  EXPECT_EQ(table[128], rootOf(255 * 128));
}

TEST(Gamma, BeginsAtZero) {
  for (int gamma : {-30, -10, 0, 1, 10, 22, 100})
    EXPECT_EQ(gammaTable({gamma, gamma, 50, 200}, 8, 8)[0], 0) << gamma;
}

TEST(Gamma, BelowZeroClampsToTheTop) {
  const auto table = gammaTable({-10, -10, 0, 0}, 8, 8);  // 255 * 255 / i
  for (size_t i = 1; i < 255; ++i) EXPECT_EQ(table[i], 255) << i;
}

TEST(Gamma, OfZeroIsBlack) {
  const auto table = gammaTable({0, 0, 0, 0}, 8, 8);
  for (size_t i = 0; i < 255; ++i) EXPECT_EQ(table[i], 0) << i;
}

TEST(Gamma, IsShiftedToTheOutput) {
  const auto full = gammaTable({20, 20, 0, 0}, 10, 10), table = gammaTable({20, 20, 0, 0}, 10, 8);
  for (size_t i = 0; i < 1023; ++i) EXPECT_EQ(table[i], full[i] >> 2) << i;
}

TEST(Gamma, CountsTheShiftModulo32) {
  const auto deeper = gammaTable({10, 10, 0, 0}, 8, 10);  // by 30
  for (size_t i = 0; i < 255; ++i) EXPECT_EQ(deeper[i], 0) << i;
  const auto same = gammaTable({10, 10, 0, 0}, 8, 8 - 32);
  for (size_t i = 0; i < 255; ++i) EXPECT_EQ(same[i], i);
}

TEST(Gamma, WritesNothingWithoutATop) {
  for (int nInBits : {0, 32}) {
    std::vector<unsigned short> table(4, kUnset);
    GenerateGammaLut(22, 22, 0, 0, nInBits, 8, table.data());
    EXPECT_THAT(table, Each(kUnset)) << nInBits;
  }
  EXPECT_THAT(gammaTable({22, 22, 0, 0}, 1, 1), ElementsAre(0, kUnset));
}

}  // namespace
}  // namespace vistrel::core::test
