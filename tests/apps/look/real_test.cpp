#include "apps/look/real.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vistrel::app {
namespace {

TEST(Real, PowersOfTwoAreExact) {
  for (int n = -60; n <= 60; ++n) {
    EXPECT_EQ(log2Of(std::ldexp(1, n)), n);
    EXPECT_EQ(exp2Of(n), std::ldexp(1, n));
  }
}

TEST(Real, OthersHaveElevenDigits) {
  for (double x = 1e-9; x < 1e9; x *= 1.37) EXPECT_NEAR(log2Of(x), std::log2(x), 1e-11) << x;
  for (double x = -30; x < 30; x += 0.0173) EXPECT_NEAR(exp2Of(x) / std::exp2(x), 1, 1e-11) << x;
}

}  // namespace
}  // namespace vistrel::app
