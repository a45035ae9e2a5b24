// The integer rules at their limits.
#include "common/arith.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vistrel::core::test {
namespace {

constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kMin = std::numeric_limits<int32_t>::min();

TEST(Shifts, CountModulo32) {
  EXPECT_EQ(shl(3, 4), 48u);
  EXPECT_EQ(shl(3, 31), 0x80000000u);
  EXPECT_EQ(shl(3, 32), 3u);
  EXPECT_EQ(shl(3, 33), 6u);
  EXPECT_EQ(shl(3, 0xFFFFFFFF), 0x80000000u);
  EXPECT_EQ(shr(0x80000000, 31), 1u);
  EXPECT_EQ(shr(0x80000000, 32), 0x80000000u);
  EXPECT_EQ(shr(0x80000000, 0xFFFFFFFF), 1u);
  EXPECT_EQ(sar(100, 35), 12);
}

TEST(Shifts, OfSignedNumbersRoundDown) {
  EXPECT_EQ(sar(7, 1), 3);
  EXPECT_EQ(sar(-7, 1), -4);
  EXPECT_EQ(sar(-1, 31), -1);
  EXPECT_EQ(sar(kMin, 31), -1);
}

TEST(Wrapping, StartsOverPastEitherLimit) {
  EXPECT_EQ(wrapSub(2, 5), -3);
  EXPECT_EQ(wrapSub(kMin, 1), kMax);
  EXPECT_EQ(wrapSub(0, kMin), kMin);
  EXPECT_EQ(wrapMul(-3, 5), -15);
  EXPECT_EQ(wrapMul(kMin, -1), kMin);
  EXPECT_EQ(wrapMul(65536, 65536), 0);
  EXPECT_EQ(wrapMul(65537, 65537), 131073);  // 2^32 + 2^17 + 1
}

TEST(Truncation, IsTowardZero) {
  EXPECT_EQ(truncToInt(2.9), 2);
  EXPECT_EQ(truncToInt(-2.9), -2);
  EXPECT_EQ(truncToInt(-0.5), 0);
}

TEST(Truncation, GivesTheLowestIntegerOutOfRange) {
  EXPECT_EQ(truncToInt(2147483647.5), kMax);
  EXPECT_EQ(truncToInt(2147483648.0), kMin);
  EXPECT_EQ(truncToInt(-2147483648.5), kMin);
  EXPECT_EQ(truncToInt(-1e300), kMin);
  EXPECT_EQ(truncToInt(std::numeric_limits<double>::infinity()), kMin);
  EXPECT_EQ(truncToInt(std::nan("")), kMin);
}

}  // namespace
}  // namespace vistrel::core::test
