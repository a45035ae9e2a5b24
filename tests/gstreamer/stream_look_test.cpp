#include "gstreamer/stream_look.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace vistrel::gstreamer {
namespace {

struct Size {
  uint32_t width, height;
};
constexpr Size kUsual{256, 192};

// White balance leans towards the light that is common.
constexpr double kLeaning = 0.06;

// Patches of many grays in light that the sensor sees as red : green : blue, with noise of that
// deviation, else of a hundredth of full scale.
std::vector<uint16_t> patches(const Size& size, double red, double blue, double deviation,
                              uint32_t seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> noise(0, deviation);
  std::vector<uint16_t> samples(size.width * size.height);
  for (uint32_t y = 0; y < size.height; ++y)
    for (uint32_t x = 0; x < size.width; ++x) {
      const uint32_t colour = vistrel_colour_at(VISTREL_RGGB, x, y);
      const double light = colour == VISTREL_RED ? red : colour == VISTREL_BLUE ? blue : 1;
      const double gray = 300 + 170.0 * ((x / 16 * 7 + y / 16 * 5) % 16);
      samples[y * size.width + x] =
          static_cast<uint16_t>(std::clamp(gray * light + noise(random), 0.0, 4095.0));
    }
  return samples;
}

std::vector<uint16_t> patches(double red, double blue, uint32_t seed) {
  return patches(kUsual, red, blue, 40, seed);
}

vistrel_conversion applied(StreamLook& look, const std::vector<uint16_t>& samples, double seconds,
                           const Size& size = kUsual) {
  vistrel_frame frame = vistrel::frameOf(samples, size.width, size.height, 12, VISTREL_RGGB);
  frame.stride = size.width * 2;
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.region = {0, 0, size.width, size.height};
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

// The largest step of gains from frame to frame on a still scene.
double largestStep(const Size& size, double deviation, int frames, double seconds) {
  StreamLook look;
  look.set(balanced(BalanceMode::kContinuous));
  double largest = 0;
  std::array<double, 3> last{};
  for (int i = 0; i < frames; ++i) {
    const auto samples = patches(size, 0.6, 0.7, deviation, static_cast<uint32_t>(i));
    const vistrel_conversion c = applied(look, samples, seconds, size);
    for (size_t colour = 0; colour < 3; ++colour) {
      if (i) largest = std::max(largest, std::abs(c.gains[colour] / last[colour] - 1));
      last[colour] = c.gains[colour];
    }
  }
  return largest;
}

TEST(StreamLook, HoldsGainsStillInNoise) { EXPECT_LT(largestStep(kUsual, 40, 60, 0.2), 0.005); }

// Where gains that are found in one frame scatter by a third.
TEST(StreamLook, HoldsGainsStillOnSmallNoisyScenes) {
  for (const Size size : {Size{16, 12}, {64, 48}})
    for (const double deviation : {200.0, 600.0, 1200.0})
      EXPECT_LT(largestStep(size, deviation, 150, 0.04), 0.005) << size.width << " " << deviation;
}

// The way is that from the gains before to those after: at 25 Hz, 1/e of it is left after the time
// constant, here a second, and some frames that prove the change.
TEST(StreamLook, FollowsTheLightWithinTheTimeConstant) {
  constexpr Size kSmall{64, 48};
  StreamLook look;
  look.set(balanced(BalanceMode::kContinuous));
  uint32_t seed = 0;
  const auto redAfter = [&](double red, double blue, int frames) {
    vistrel_conversion c{};
    for (int i = 0; i < frames; ++i)
      c = applied(look, patches(kSmall, red, blue, 200, ++seed), 0.04, kSmall);
    return std::log(c.gains[0]);
  };
  const double before = redAfter(0.6, 0.7, 75), soon = redAfter(0.9, 0.5, 32);
  const double after = redAfter(0.9, 0.5, 150);
  EXPECT_LT(after, before - 0.3);
  EXPECT_LT(soon - after, (before - after) * std::exp(-1));
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
  vistrel_frame frame = vistrel::frameOf(samples, kUsual.width, kUsual.height, 12, VISTREL_MONO);
  frame.stride = kUsual.width * 2;
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.region = {0, 0, kUsual.width, kUsual.height};
  look.apply(frame, 0, conversion);
  EXPECT_EQ(conversion.white_balance, VISTREL_BALANCE_NONE);
}

}  // namespace
}  // namespace vistrel::gstreamer
