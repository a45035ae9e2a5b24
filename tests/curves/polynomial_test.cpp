// The polynomial through five points.
#include "vistrel/solvers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace vistrel::core::test {
namespace {

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::IsNan;
using ::testing::Pointwise;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<double> polynomial(std::vector<double> x, std::vector<double> y, int expected) {
  std::vector<double> coefficients(5, 77);
  EXPECT_EQ(Resolve4thOrderPolynomium(x.data(), y.data(), coefficients.data()), expected);
  return coefficients;
}

TEST(Polynomial, FindsTheSquare) {
  EXPECT_THAT(polynomial({0, 1, 2, 3, 4}, {0, 1, 4, 9, 16}, 1),
              Pointwise(DoubleNear(1e-12), {0.0, 0.0, 1.0, 0.0, 0.0}));
}

TEST(Polynomial, HasTheHighestPowerFirst) {  // 2 x^4 - 3 x^3 + x^2 - 5 x + 7
  EXPECT_THAT(polynomial({-2, -1, 0, 1, 2}, {77, 18, 7, 2, 9}, 1),
              Pointwise(DoubleNear(1e-12), {2.0, -3.0, 1.0, -5.0, 7.0}));
}

TEST(Polynomial, RefusesTwoPointsOverEachOther) {
  EXPECT_THAT(polynomial({0, 1, 1, 3, 4}, {0, 1, 2, 9, 16}, 0), Each(77));
}

TEST(Polynomial, LetsNaNThrough) {
  EXPECT_THAT(polynomial({0, 1, 2, 3, 4}, {0, 1, kNaN, 9, 16}, 1), Each(IsNan()));
}

}  // namespace
}  // namespace vistrel::core::test
