// The class against the compiler's integers of 128 bits.
#include "common/uint128.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#ifdef __SIZEOF_INT128__

namespace vistrel::core {
namespace {

using Halves = Uint128Halves;

Halves halvesOf(Uint128 v) {
  return (Halves(static_cast<uint64_t>(v >> 64)) << 64) + Halves(static_cast<uint64_t>(v));
}

void expectSame(Halves got, Uint128 expected) {
  EXPECT_EQ(static_cast<uint64_t>(got), static_cast<uint64_t>(expected));
  EXPECT_EQ(static_cast<uint64_t>(got >> 64), static_cast<uint64_t>(expected >> 64));
}

// Of any length.
struct Numbers {
  std::mt19937_64 random{1};
  Uint128 operator()() {
    const Uint128 v = Uint128{random()} << 64 | random();
    return v >> random() % 128;
  }
};

TEST(Uint128, CalculatesAsTheCompiler) {
  Numbers numbers;
  for (int i = 0; i < 20000; ++i) {
    const Uint128 a = numbers(), b = numbers();
    const Halves x = halvesOf(a), y = halvesOf(b);
    expectSame(x + y, a + b);
    expectSame(x - y, a - b);
    expectSame(-x, -a);
    expectSame(x * y, a * b);
    if (b) expectSame(x / y, a / b);
    EXPECT_EQ(x < y, a < b);
    EXPECT_EQ(x == y, a == b);
    EXPECT_EQ(x > y, a > b);
  }
}

TEST(Uint128, DividesByTheLargest) {
  const Uint128 most = ~Uint128{0}, half = most >> 1;
  for (const Uint128 a : {most, most - 1, half, half + 1})
    for (const Uint128 b : {most, most - 1, half, half + 1, half + 2})
      expectSame(halvesOf(a) / halvesOf(b), a / b);
}

TEST(Uint128, Shifts) {
  const Uint128 v = Uint128{0x0123456789ABCDEF} << 64 | 0xFEDCBA9876543210;
  for (unsigned n = 0; n < 128; ++n) {
    expectSame(halvesOf(v) << n, v << n);
    expectSame(halvesOf(v) >> n, v >> n);
  }
}

TEST(Uint128, Converts) {
  EXPECT_FALSE(Halves(0));
  EXPECT_TRUE(Halves(1) << 64);
  EXPECT_EQ(static_cast<uint16_t>(Halves(0x12345)), 0x2345);
  EXPECT_EQ(static_cast<double>(Halves(3) << 100), std::ldexp(3.0, 100));
}

}  // namespace
}  // namespace vistrel::core

#endif
