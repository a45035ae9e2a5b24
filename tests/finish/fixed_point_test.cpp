// Logarithms, powers and roots against long double, and at their ends.
#include "finish/fixed_point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vistrel::core {
namespace {

uint64_t integerOf(Fixed x) { return static_cast<uint64_t>(x >> 64); }
long double fractionOf(Fixed x) { return std::ldexp(1.0L * static_cast<uint64_t>(x), -64); }
long double valueOf(Fixed x) { return 1.0L * integerOf(x) + fractionOf(x); }

// long double has 64 bits at least; its functions are right to about one of them.
constexpr long double kUnit = 0x1p-60L, kMathError = 0x1p-63L;

void expectLogarithm(uint64_t x) {
  int exponent = 0;
  const long double m = 2 * std::frexp(1.0L * x, &exponent);
  const Fixed log = fixedLog2(x);
  ASSERT_EQ(integerOf(log), exponent - 1u) << x;
  const long double shortfall = std::log2(m) - fractionOf(log);
  ASSERT_GT(shortfall, -kMathError) << x;
  ASSERT_LT(shortfall, kUnit + kMathError) << x;
}

TEST(FixedLog2, IsExactForPowersOfTwo) {
  for (unsigned n = 0; n < 63; ++n) EXPECT_EQ(fixedLog2(uint64_t{1} << n), Fixed{n} << 64) << n;
}

TEST(FixedLog2, FallsShortByLessThanItsBound) {
  for (uint64_t x = 1; x < 200000; ++x) expectLogarithm(x);
  for (unsigned n = 1; n < 63; ++n) {
    expectLogarithm((uint64_t{1} << n) + 1);
    expectLogarithm((uint64_t{1} << n) - 1);
  }
  expectLogarithm(INT64_MAX);
  std::mt19937_64 random(1);
  for (int i = 0; i < 200000; ++i) {
    const auto x = random();
    expectLogarithm(x >> (1 + x % 62) | 1);
  }
}

void expectPower(Fixed x) {
  const long double power = std::exp2(-fractionOf(x));
  const Fixed result = fixedExp2Minus(x);
  const long double shortfall =
      std::ldexp(power, -static_cast<int>(integerOf(x))) - valueOf(result);
  const long double least = std::ldexp(kMathError, -static_cast<int>(integerOf(x)));
  ASSERT_GT(shortfall, -least) << valueOf(x);
  ASSERT_LT(shortfall, std::ldexp(kUnit, -static_cast<int>(integerOf(x))) + least + 0x1p-64L)
      << valueOf(x);
}

TEST(FixedExp2Minus, IsExactForIntegers) {
  for (unsigned n = 0; n <= 64; ++n) EXPECT_EQ(fixedExp2Minus(Fixed{n} << 64), kFixedOne >> n) << n;
}

TEST(FixedExp2Minus, FallsShortByLessThanItsBound) {
  for (unsigned n = 0; n < 64; ++n) {
    expectPower((Fixed{n} << 64) + 1);
    expectPower((Fixed{n + 1} << 64) - 1);
  }
  std::mt19937_64 random(2);
  for (int i = 0; i < 200000; ++i) expectPower(Fixed{random()} << i % 7);
}

TEST(FixedExp2Minus, EndsAtZero) {
  EXPECT_EQ(fixedExp2Minus(Fixed{64} << 64), Fixed{1});
  EXPECT_EQ(fixedExp2Minus((Fixed{64} << 64) + 1), Fixed{0});
  for (const unsigned n : {65u, 128u, 160u, 1u << 20})
    EXPECT_EQ(fixedExp2Minus(Fixed{n} << 64), Fixed{0}) << n;
}

TEST(FixedPoint, LogarithmsAndPowersAreInverse) {
  for (uint64_t x = 1; x < 65536; x += 7) {
    const long double back = valueOf(fixedExp2Minus(fixedLog2(x))) * x;
    EXPECT_NEAR(static_cast<double>(back - 1), 0, 0x1p-46) << x;  // 2^-64 of 2^-16, twice over
  }
}

void expectRoot(Uint128 x) {
  const Uint128 root = rootOf(x);
  ASSERT_LE(root * root, x) << static_cast<uint64_t>(root);
  ASSERT_GT((root + 1) * (root + 1), x) << static_cast<uint64_t>(root);
}

TEST(RootOf, IsRoundedDown) {
  for (Uint128 x = 0; x < 100000; ++x) expectRoot(x);
  std::mt19937_64 random(3);
  for (int i = 0; i < 200000; ++i) {
    const Uint128 root = random() >> (2 + i % 60);
    for (const Uint128 x : {root * root, root * root + 2 * root}) expectRoot(x);
    expectRoot(Uint128{random()} * random() >> (2 + i % 120));
  }
  expectRoot((Uint128{1} << 126) - 1);
}

}  // namespace
}  // namespace vistrel::core
