#include "gstreamer/white_balance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vistrel::gstreamer {
namespace {

using app::Gains;

// Light that a test changes, and how often it was measured.
struct Lamp {
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
  Lamp light;
  WhiteBalance balance;
  EXPECT_EQ(balance.next(BalanceMode::kOnce, 0.04, 1, light.measure()), light.gains);
  EXPECT_EQ(balance.next(BalanceMode::kContinuous, 0.04, 1, light.measure()), light.gains);
}

TEST(WhiteBalance, KeepsThemUnlessItIsContinuous) {
  Lamp light;
  WhiteBalance balance;
  balance.next(BalanceMode::kOnce, 0.04, 1, light.measure());
  const Gains first = light.gains;
  light.gains = {4096, 8192, 4096};
  for (int i = 0; i < 100; ++i)
    EXPECT_EQ(balance.next(BalanceMode::kOnce, 1, 1, light.measure()), first);
  EXPECT_EQ(light.measured, 1);
}

// Until it is known how measurements scatter.
void watch(WhiteBalance& balance, Lamp& light) {
  for (int i = 0; i < 50; ++i) balance.next(BalanceMode::kContinuous, 0.04, 0.04, light.measure());
}

// After a time constant 1/e of the way is left, counted from the frame that proves the change.
TEST(WhiteBalance, FollowsTheLight) {
  Lamp light;
  WhiteBalance balance;
  watch(balance, light);
  light.gains[0] = 4096;
  Gains gains{};
  for (int i = 0; i < 3; ++i)
    gains = balance.next(BalanceMode::kContinuous, 0.25, 2, light.measure());
  EXPECT_EQ(gains[0], 8192u);
  for (int i = 0; i < 8; ++i)
    gains = balance.next(BalanceMode::kContinuous, 0.25, 2, light.measure());
  EXPECT_NEAR(gains[0], 4096 * std::pow(2, std::exp(-1)), 2);
  EXPECT_EQ(gains[1], 4096u);
  for (int i = 0; i < 100; ++i)
    gains = balance.next(BalanceMode::kContinuous, 0.25, 2, light.measure());
  EXPECT_EQ(gains, light.gains);
}

// At 25 Hz, the time constant and a fifth of it, for what comes before the proof.
TEST(WhiteBalance, FollowsTheLightInTimeAmidNoise) {
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 0.05);
  double red = 8192;
  const auto measure = [&] {
    return Gains{static_cast<uint32_t>(red * std::exp(noise(random))), 4096, 6144};
  };
  WhiteBalance balance;
  for (int i = 0; i < 100; ++i) balance.next(BalanceMode::kContinuous, 0.04, 1, measure);
  red = 4096;
  Gains gains{};
  for (int i = 0; i < 30; ++i) gains = balance.next(BalanceMode::kContinuous, 0.04, 1, measure);
  EXPECT_LT(gains[0], 4096 * std::pow(2, std::exp(-1)) * 1.05);
  EXPECT_GT(gains[0], 4096u);
}

// A first frame of another light, as cameras send that still expose.
TEST(WhiteBalance, LeavesTheFirstFrameBehind) {
  Lamp light;
  WhiteBalance balance;
  balance.next(BalanceMode::kContinuous, 0.04, 1, light.measure());
  light.gains[0] = 4096;
  Gains gains{};
  for (int i = 0; i < 100; ++i)
    gains = balance.next(BalanceMode::kContinuous, 0.04, 1, light.measure());
  EXPECT_NEAR(gains[0], 4096, 200);
}

TEST(WhiteBalance, MeasuresSomeTimesInATimeConstant) {
  Lamp light;
  WhiteBalance balance;
  watch(balance, light);
  light.measured = 0;
  for (int i = 0; i < 240; ++i)
    balance.next(BalanceMode::kContinuous, 1.0 / 60, 1, light.measure());
  EXPECT_GE(light.measured, 4 * 6);
  EXPECT_LE(light.measured, 4 * 8 + 1);
}

// At any rate of frames, and if gains follow at once.
TEST(WhiteBalance, StaysStillInNoise) {
  for (const double deviation : {0.01, 0.03, 0.1, 0.3, 0.6})
    for (const double seconds : {0.005, 0.04, 1.0})
      for (const double timeConstant : {0.0, 0.1, 1.0}) {
        std::mt19937 random(2);
        std::normal_distribution<double> noise(0, deviation);
        const auto measure = [&] {
          const auto noisy = [&](double gain) {
            return static_cast<uint32_t>(gain * std::exp(noise(random)));
          };
          return Gains{noisy(8192), 4096, noisy(6144)};
        };
        WhiteBalance balance;
        Gains last = balance.next(BalanceMode::kContinuous, seconds, timeConstant, measure);
        for (int i = 0; i < 1000; ++i) {
          const Gains gains =
              balance.next(BalanceMode::kContinuous, seconds, timeConstant, measure);
          for (size_t c = 0; c < 3; ++c)
            ASSERT_LT(std::abs(double(gains[c]) - last[c]), 0.005 * last[c])
                << i << " " << deviation << " " << seconds << " " << timeConstant;
          last = gains;
        }
      }
}

TEST(WhiteBalance, ForgetsItsGains) {
  Lamp light;
  WhiteBalance balance;
  balance.next(BalanceMode::kOnce, 1, 1, light.measure());
  balance.reset();
  light.gains = {5000, 4096, 4096};
  EXPECT_EQ(balance.next(BalanceMode::kOnce, 1, 1, light.measure()), light.gains);
}

}  // namespace
}  // namespace vistrel::gstreamer
