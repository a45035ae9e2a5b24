#include "gstreamer/stream_look.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vistrel::gstreamer {
namespace {

constexpr uint32_t kWidth = 256, kHeight = 192;

// White balance leans towards the light that is common.
constexpr double kLeaning = 0.06;

// Patches of many grays in light that the sensor sees as red : green : blue, with noise of a
// hundredth of full scale.
std::vector<uint16_t> patches(double red, double blue, uint32_t seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> noise(0, 40);
  std::vector<uint16_t> samples(kWidth * kHeight);
  for (uint32_t y = 0; y < kHeight; ++y)
    for (uint32_t x = 0; x < kWidth; ++x) {
      const uint32_t colour = vistrel_colour_at(VISTREL_RGGB, x, y);
      const double light = colour == VISTREL_RED ? red : colour == VISTREL_BLUE ? blue : 1;
      const double gray = 300 + 170.0 * ((x / 16 * 7 + y / 16 * 5) % 16);
      samples[y * kWidth + x] =
          static_cast<uint16_t>(std::clamp(gray * light + noise(random), 0.0, 4095.0));
    }
  return samples;
}

vistrel_conversion applied(StreamLook& look, const std::vector<uint16_t>& samples, double seconds) {
  vistrel_frame frame = vistrel::frameOf(samples, kWidth, kHeight, 12, VISTREL_RGGB);
  frame.stride = kWidth * 2;
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.region = {0, 0, kWidth, kHeight};
  look.apply(frame, seconds, conversion);
  return conversion;
}

Settings balanced(BalanceMode mode) {
  Settings settings;
  settings.balance = static_cast<uint32_t>(mode);
  return settings;
}

TEST(StreamLook, LeavesSamplesAsTheyAre) {
  StreamLook look;
  look.set({});
  const vistrel_conversion c = applied(look, patches(0.6, 0.7, 1), 0);
  EXPECT_EQ(c.finish, nullptr);
  EXPECT_EQ(c.white_balance, VISTREL_BALANCE_NONE);
  EXPECT_EQ(c.white, 0u);
}

TEST(StreamLook, MakesGraysGray) {
  StreamLook look;
  look.set(balanced(BalanceMode::kOnce));
  const vistrel_conversion c = applied(look, patches(0.6, 0.7, 1), 0);
  EXPECT_EQ(c.white_balance, VISTREL_BALANCE_GAINS);
  EXPECT_NEAR(c.gains[0] / 4096.0, 1 / 0.6, kLeaning / 0.6);
  EXPECT_NEAR(c.gains[1] / 4096.0, 1, 0.001);
  EXPECT_NEAR(c.gains[2] / 4096.0, 1 / 0.7, kLeaning / 0.7);
}

TEST(StreamLook, ForgetsWhatItHasDecided) {
  StreamLook look;
  Settings settings = balanced(BalanceMode::kOnce);
  settings.look = "srgb";
  look.set(settings);
  const vistrel_conversion first = applied(look, patches(0.6, 0.7, 1), 0);
  const uint32_t exposure = first.finish->exposure;
  look.reset();
  const vistrel_conversion c = applied(look, patches(0.3, 0.5, 1), 0);
  EXPECT_GT(c.gains[0], first.gains[0] * 3 / 2);
  EXPECT_NE(c.finish->exposure, exposure);
}

TEST(StreamLook, HoldsGainsStillInNoise) {
  StreamLook look;
  look.set(balanced(BalanceMode::kContinuous));
  const vistrel_conversion first = applied(look, patches(0.6, 0.7, 1), 0);
  double last[3] = {double(first.gains[0]), double(first.gains[1]), double(first.gains[2])};
  for (uint32_t i = 2; i < 60; ++i) {
    const vistrel_conversion c = applied(look, patches(0.6, 0.7, i), 0.2);
    for (size_t colour = 0; colour < 3; ++colour) {
      EXPECT_NEAR(c.gains[colour], last[colour], 0.005 * last[colour]) << i;
      last[colour] = c.gains[colour];
    }
  }
}

TEST(StreamLook, FollowsTheLight) {
  StreamLook look;
  look.set(balanced(BalanceMode::kContinuous));
  applied(look, patches(0.6, 0.7, 1), 0);
  vistrel_conversion c{};
  for (uint32_t i = 2; i < 60; ++i) c = applied(look, patches(0.9, 0.5, i), 0.2);
  EXPECT_NEAR(c.gains[0] / 4096.0, 1 / 0.9, kLeaning / 0.9);
  EXPECT_NEAR(c.gains[2] / 4096.0, 1 / 0.5, kLeaning / 0.5);
}

// The second frame is darker. What was decided from the first one stays.
TEST(StreamLook, DecidesOnce) {
  StreamLook look;
  Settings settings;
  settings.look = "srgb";
  look.set(settings);
  const vistrel_conversion first = applied(look, patches(0.6, 0.7, 1), 0);
  ASSERT_TRUE(first.finish);
  const uint32_t exposure = first.finish->exposure;
  const auto darker = patches(0.3, 0.2, 1);
  EXPECT_EQ(applied(look, darker, 0.1).finish->exposure, exposure);
  settings.gains = "1:1:1";
  look.set(settings);
  EXPECT_NE(applied(look, darker, 0.1).finish->exposure, exposure);
}

TEST(StreamLook, ChangesTheExposureAlone) {
  StreamLook look;
  Settings settings;
  settings.look = "srgb";
  settings.exposure = 1;
  look.set(settings);
  const vistrel_conversion first = applied(look, patches(0.6, 0.7, 1), 0);
  EXPECT_EQ(first.finish->exposure, 4096u);
  settings.exposure = 1.5;
  look.set(settings);
  const vistrel_conversion second = applied(look, patches(0.2, 0.2, 1), 0);
  EXPECT_EQ(second.finish->exposure, 6144u);
  EXPECT_EQ(second.gains[0], first.gains[0]);
}

TEST(StreamLook, LeavesMonoFramesUnbalanced) {
  const std::vector<uint16_t> samples = patches(1, 1, 1);
  StreamLook look;
  Settings settings = balanced(BalanceMode::kContinuous);
  settings.gains = "2:1:2";
  look.set(settings);
  vistrel_frame frame = vistrel::frameOf(samples, kWidth, kHeight, 12, VISTREL_MONO);
  frame.stride = kWidth * 2;
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.region = {0, 0, kWidth, kHeight};
  look.apply(frame, 0, conversion);
  EXPECT_EQ(conversion.white_balance, VISTREL_BALANCE_NONE);
}

}  // namespace
}  // namespace vistrel::gstreamer
