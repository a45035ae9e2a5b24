// Curves against their definitions.
#include "apps/look/curve.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vistrel::app {
namespace {

constexpr double kPoint = 1 / 65535.0;  // of a point

double srgb(double x) { return x <= 0.0031308 ? 12.92 * x : 1.055 * std::pow(x, 1 / 2.4) - 0.055; }

TEST(CurvePoints, FollowTheDefinitions) {
  const auto points = pointsOf({Curve::kSrgb, 0}, 1025);
  ASSERT_EQ(points.size(), 1025u);
  for (size_t i = 0; i < points.size(); ++i)
    EXPECT_NEAR(points[i] * kPoint, srgb(static_cast<double>(i) / 1024), kPoint);
  EXPECT_TRUE(pointsOf({Curve::kLinear, 0}, 1025).empty());
}

// Between points lies a straight line, which is off by a part of the curve's bend.
TEST(CurveSketchOf, FollowsTheDefinitions) {
  const CurveSketch sketch({Curve::kSrgb, 0}), gamma({Curve::kGamma, 2200}),
      asinh({Curve::kAsinh, 50'000}), linear({Curve::kLinear, 0});
  for (double x = 0; x <= 1; x += 1 / 1000.0) {
    EXPECT_NEAR(sketch.at(x), srgb(x), 0.0003) << x;
    EXPECT_NEAR(gamma.at(x), std::pow(x, 1 / 2.2), 0.0003) << x;
    EXPECT_NEAR(asinh.at(x), std::asinh(50 * x) / std::asinh(50), 0.0003) << x;
    EXPECT_EQ(linear.at(x), x);
  }
}

TEST(CurveSketchOf, ClampsItsArgument) {
  const CurveSketch sketch({Curve::kSrgb, 0});
  EXPECT_EQ(sketch.at(-1), 0);
  EXPECT_EQ(sketch.at(2), 1);
}

}  // namespace
}  // namespace vistrel::app
