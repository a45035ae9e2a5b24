// The splines through five and six points, and the polynomial through five.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/curves/natural_spline.h"
#include "vistrel/solvers.h"

namespace vistrel::core::test {
namespace {

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::IsNan;
using ::testing::Pointwise;

using Values = std::vector<double>;

// Four coefficients per segment. The number of points selects the function.
Values spline(Values x, Values y, int expected = 1) {
  Values coefficients(4 * (x.size() - 1), 77);
  const auto resolve = x.size() == 5 ? Resolve4thOrderSpline : Resolve5thOrderSpline;
  EXPECT_EQ(resolve(x.data(), y.data(), coefficients.data()), expected);
  return coefficients;
}

struct Segment {
  double a, b, c, d;
  double at(double t) const { return ((a * t + b) * t + c) * t + d; }
};

Segment segment(const Values& coefficients, size_t k) {
  const double* c = &coefficients[4 * k];
  return {c[0], c[1], c[2], c[3]};
}

const Values kX5 = {0, 0.5, 2, 2.25, 4}, kY5 = {1, 3, -2, 0, 5};
const Values kX6 = {0, 0.08, 0.4, 0.64, 0.86, 1}, kY6 = {0, 0.04, 0.4, 0.84, 0.98, 1};

TEST(Spline, RunsThroughItsPoints) {
  for (const auto& [x, y] : {std::pair{kX5, kY5}, std::pair{kX6, kY6}}) {
    const Values c = spline(x, y);
    for (size_t k = 0; k + 1 < x.size(); ++k) {
      EXPECT_EQ(segment(c, k).at(0), y[k]);
      EXPECT_NEAR(segment(c, k).at(x[k + 1] - x[k]), y[k + 1], 1e-14);
    }
  }
}

TEST(Spline, OfALineIsTheLine) {
  for (const Values& x : {kX5, kX6}) {
    Values y;
    for (double v : x) y.push_back(3 * v - 2);
    const Values c = spline(x, y);
    for (size_t k = 0; k + 1 < x.size(); ++k) {
      EXPECT_NEAR(segment(c, k).a, 0, 1e-12);
      EXPECT_NEAR(segment(c, k).b, 0, 1e-12);
      EXPECT_NEAR(segment(c, k).c, 3, 1e-12);
    }
  }
}

TEST(Spline, ThroughFivePointsIsTheNaturalOne) {
  const Values c = spline(kX5, kY5);
  const NaturalSpline natural(kX5, kY5);
  for (size_t k = 0; k < 4; ++k)
    for (double t : {0.0, 0.1, 0.2, 0.25})
      EXPECT_NEAR(segment(c, k).at(t), natural.at(k, kX5[k] + t), 1e-13) << k << ", " << t;
}

TEST(Spline, ThroughEquallySpacedPointsIsTheNaturalOne) {
  const Values x = {0, 2, 4, 6, 8, 10}, y = {3, -1, 4, 1, -5, 9};
  const Values c = spline(x, y);
  const NaturalSpline natural(x, y);
  for (size_t k = 0; k < 5; ++k)
    for (double t : {0.0, 0.5, 1.0, 1.75})
      EXPECT_NEAR(segment(c, k).at(t), natural.at(k, x[k] + t), 1e-13) << k << ", " << t;
}

// quirk: spacing-two-in-row-four
TEST(Spline, ThroughSixPointsTakesTheSpacingOfSegmentTwoInItsFifthEquation) {
  const Values& x = kX6;
  const Values& y = kY6;
  const Values c = spline(x, y);
  double h[5], m[6] = {};
  for (size_t k = 0; k < 5; ++k) {
    h[k] = x[k + 1] - x[k];
    m[k] = 2 * segment(c, k).b;
  }
  const auto right = [&](size_t k) {
    return 6 * ((y[k + 1] - y[k]) / h[k] - (y[k] - y[k - 1]) / h[k - 1]);
  };
  for (size_t k = 1; k < 4; ++k)
    EXPECT_NEAR(h[k - 1] * m[k - 1] + 2 * (h[k - 1] + h[k]) * m[k] + h[k] * m[k + 1], right(k),
                1e-12);
  EXPECT_NEAR(h[2] * m[3] + 2 * (h[3] + h[4]) * m[4] + h[4] * m[5], right(4), 1e-12);
  EXPECT_GT(std::fabs(m[4] - NaturalSpline(x, y).second(4)), 0.1);
}

TEST(Spline, RejectsNearlySingularPointsAndLeavesTheResult) {
  EXPECT_THAT(spline({0, 1e-6, 2e-6, 3e-6, 4e-6}, kY5, 0), Each(77));
  EXPECT_THAT(spline({0, 1e-6, 2e-6, 3e-6, 4e-6, 5e-6}, kY6, 0), Each(77));
}

TEST(Spline, RejectsPointsAllOverEachOther) {
  EXPECT_THAT(spline({2, 2, 2, 2, 2}, kY5, 0), Each(77));
  EXPECT_THAT(spline({2, 2, 2, 2, 2, 2}, kY6, 0), Each(77));
}

TEST(Spline, LetsTheInfinitiesOfTwoEqualPlacesThrough) {
  const Values five = spline({0, 1, 1, 2, 3}, {0, 1, 2, 3, 5});
  const Values six = spline({0, 1, 1, 2, 3, 4}, {0, 1, 2, 3, 5, 8});
  for (const Values& c : {five, six}) {
    EXPECT_FALSE(std::isfinite(segment(c, 1).a));
    EXPECT_FALSE(std::isfinite(segment(c, 1).c));
    EXPECT_EQ(segment(c, 1).d, 1);
    EXPECT_EQ(segment(c, 2).d, 2);
  }
}

TEST(Spline, LetsNaNThrough) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const Values c = spline({0, 1, 2, 3, 4}, {0, 1, nan, 3, 5});
  EXPECT_TRUE(std::isnan(segment(c, 1).a));
  EXPECT_EQ(segment(c, 3).d, 3);
}

constexpr double kQuietNaN = std::numeric_limits<double>::quiet_NaN();

Values polynomial(Values x, Values y, int expected) {
  Values coefficients(5, 77);
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

TEST(Polynomial, RejectsTwoPointsOverEachOther) {
  EXPECT_THAT(polynomial({0, 1, 1, 3, 4}, {0, 1, 2, 9, 16}, 0), Each(77));
}

TEST(Polynomial, LetsNaNThrough) {
  EXPECT_THAT(polynomial({0, 1, 2, 3, 4}, {0, 1, kQuietNaN, 9, 16}, 1), Each(IsNan()));
}

}  // namespace
}  // namespace vistrel::core::test
