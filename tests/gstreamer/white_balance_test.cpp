#include "gstreamer/white_balance.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vistrel::gstreamer {
namespace {

using app::Gains;

// Light that a test changes, and how often it was measured.
struct Light {
  Gains gains = {8192, 4096, 6144};
  int measured = 0;
  WhiteBalance::Measure measure() {
    return [this] {
      ++measured;
      return gains;
    };
  }
};

TEST(WhiteBalance, TakesTheFirstGainsAtOnce) {
  Light light;
  WhiteBalance balance;
  EXPECT_EQ(balance.next(BalanceMode::kOnce, 0.04, 1, light.measure()), light.gains);
  EXPECT_EQ(balance.next(BalanceMode::kContinuous, 0.04, 1, light.measure()), light.gains);
}

TEST(WhiteBalance, KeepsThemUnlessItIsContinuous) {
  Light light;
  WhiteBalance balance;
  balance.next(BalanceMode::kOnce, 0.04, 1, light.measure());
  const Gains first = light.gains;
  light.gains = {4096, 8192, 4096};
  for (int i = 0; i < 100; ++i)
    EXPECT_EQ(balance.next(BalanceMode::kOnce, 1, 1, light.measure()), first);
  EXPECT_EQ(light.measured, 1);
}

// After a time constant 1/e of the way is left, counted from the moment at which the change is
// noticed.
TEST(WhiteBalance, FollowsTheLight) {
  Light light;
  WhiteBalance balance;
  balance.next(BalanceMode::kContinuous, 0.5, 2, light.measure());
  light.gains[0] = 4096;
  Gains gains{};
  for (int i = 0; i < 8; ++i)
    gains = balance.next(BalanceMode::kContinuous, 0.25, 2, light.measure());
  EXPECT_NEAR(gains[0], 4096 * std::pow(2, std::exp(-1)), 2);
  EXPECT_EQ(gains[1], 4096u);
  for (int i = 0; i < 100; ++i)
    gains = balance.next(BalanceMode::kContinuous, 0.25, 2, light.measure());
  EXPECT_EQ(gains, light.gains);
}

TEST(WhiteBalance, MeasuresSomeTimesInATimeConstant) {
  Light light;
  WhiteBalance balance;
  for (int i = 0; i < 240; ++i)
    balance.next(BalanceMode::kContinuous, 1.0 / 60, 1, light.measure());
  EXPECT_GE(light.measured, 4 * 6);
  EXPECT_LE(light.measured, 4 * 8 + 1);
}

// 3 % of noise in what is measured.
TEST(WhiteBalance, StaysStillInNoise) {
  Light light;
  WhiteBalance balance;
  Gains last = balance.next(BalanceMode::kContinuous, 1, 1, light.measure());
  for (int i = 0; i < 200; ++i) {
    light.gains[0] = 8192u + (i * 7919 % 3 - 1) * 240u;
    const Gains gains = balance.next(BalanceMode::kContinuous, 1, 1, light.measure());
    EXPECT_NEAR(gains[0], last[0], 0.005 * last[0]);
    last = gains;
  }
}

TEST(WhiteBalance, ForgetsItsGains) {
  Light light;
  WhiteBalance balance;
  balance.next(BalanceMode::kOnce, 1, 1, light.measure());
  balance.reset();
  light.gains = {5000, 4096, 4096};
  EXPECT_EQ(balance.next(BalanceMode::kOnce, 1, 1, light.measure()), light.gains);
}

}  // namespace
}  // namespace vistrel::gstreamer
