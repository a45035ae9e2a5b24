// Looks of frames whose black, white and neutral are known, and of frames that show nothing.
#include "apps/look/decide.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "apps/look/brightness.h"
#include "tests/apps/look/frame.h"

namespace vistrel::app {
namespace {

using ::testing::Each;

constexpr uint32_t kColours[4] = {0, 1, 1, 2};  // of RGGB

// Gray and coloured patches of 16x16 pixels from black to white under daylight, brighter by
// `exposure`; what is above white is clipped.
Frame patches(uint32_t bits, double black, double white, double exposure = 1) {
  constexpr double kNeutral[3] = {0.48, 1, 0.64};
  Noise noise;
  std::vector<std::array<double, 3>> reflectances;
  for (int i = 0; i < 400; ++i) {
    const double lightness = std::pow(noise.below(1000) / 1000.0, 2);
    reflectances.push_back({lightness, lightness, lightness});
    if (i % 2)
      for (double& r : reflectances.back()) r *= 0.2 + 0.8 * noise.below(1000) / 1000;
  }
  return Frame(320, 320, bits, VISTREL_RGGB, [&](uint32_t x, uint32_t y) {
    const uint32_t colour = kColours[2 * (y % 2) + x % 2];
    const double light = exposure * kNeutral[colour] * reflectances[y / 16 * 20 + x / 16][colour];
    const double sample = black + (white - black) * light + (white - black) / 1000 * noise.normal();
    return std::clamp(std::floor(sample + 0.5), 0.0, white);
  });
}

// A dark sky with noise, and stars of different colours.
Frame sky(uint32_t phase, const std::array<double, 3>& level, double deviation) {
  Noise noise;
  return Frame(200, 200, 16, phase, [&](uint32_t x, uint32_t y) {
    const uint32_t colour = phase == VISTREL_MONO ? 1 : kColours[2 * (y % 2) + x % 2];
    const bool isStar = x % 67 < 3 && y % 71 < 3;
    const double star = isStar ? 4000 + 1000 * ((x / 67 + y / 71 + colour) % 3) : 0;
    return std::max(0.0, level[colour] + deviation * noise.normal() + star);
  });
}

double meanOf(const Frame& frame, const Look& look) {
  const Brightness brightness(blocksOf(frame, look.black, look.white), look);
  return brightness.mean(look.exposure / 4096.0, CurveSketch(look.transfer));
}

TEST(Decide, FindsBlackWhiteAndNeutralAtEveryDepth) {
  for (const uint32_t bits : {8, 10, 12, 14, 16}) {
    const double scale = std::ldexp(1, static_cast<int>(bits) - 8);
    const Look look = decideLook(patches(bits, 16 * scale, 240 * scale, 1.3), {});
    EXPECT_NEAR(look.black[0] / scale, 16, 1.5) << bits;
    EXPECT_THAT(look.black, Each(look.black[0]));
    EXPECT_NEAR(look.white / scale, 240, 1) << bits;
    EXPECT_NEAR(look.gains[0] / 4096.0 * 0.48, 1, 0.08) << bits;
    EXPECT_EQ(look.gains[1], 4096u);
    EXPECT_NEAR(look.gains[2] / 4096.0 * 0.64, 1, 0.08) << bits;
  }
}

TEST(Decide, BrightnessDoesNotDependOnTheFramesExposure) {
  for (const double exposure : {0.1, 0.3, 1.0}) {
    const Frame frame = patches(12, 256, 4000, exposure);
    const double mean = 255 * meanOf(frame, decideLook(frame, {}));
    EXPECT_GE(mean, 80) << exposure;
    EXPECT_LE(mean, 150) << exposure;
  }
}

TEST(Decide, LinearBrightensNothing) {
  const Look look = decideLook(patches(12, 256, 4000), {LookMode::kLinear, {}});
  EXPECT_EQ(look.transfer, (Transfer{Curve::kLinear, 0}));
  EXPECT_EQ(look.exposure, kLookOne);
}

// A dark scene with a bright patch that isn't clipped.
TEST(Decide, OnlyAutoLiftsShadows) {
  const Frame frame(64, 64, 12, VISTREL_MONO,
                    [](uint32_t x, uint32_t y) { return x < 8 ? 3000 + 4 * y : 20 + x + 2 * y; });
  EXPECT_EQ(decideLook(frame, {LookMode::kAuto, {}}).transfer.curve, Curve::kAsinh);
  EXPECT_EQ(decideLook(frame, {LookMode::kSrgb, {}}).transfer.curve, Curve::kSrgb);
}

TEST(Decide, KeepsWhatIsKnown) {
  KnownLook known;
  known.black = {1, 2, 3, 4};
  known.white = 3000;
  known.gains = {5000, 4096, 6000};
  known.matrix = {4096, 1, -1, 0, 4096, 0, 0, 0, 4096};
  known.exposure = 1234;
  known.transfer = {Curve::kGamma, 2200};
  known.neutralHighlights = false;
  for (const auto mode : {LookMode::kAuto, LookMode::kLinear, LookMode::kSrgb, LookMode::kAstro}) {
    const Look look = decideLook(patches(12, 256, 4000), {mode, known});
    EXPECT_EQ(look, (Look{*known.black, 3000, *known.gains, *known.matrix, 1234, *known.transfer,
                          false}));
  }
}

TEST(Decide, TheRegionAloneCounts) {
  const Frame left = patches(12, 256, 4000);
  const Frame both(640, 320, 12, VISTREL_RGGB, [&](uint32_t x, uint32_t y) {
    const vistrel_frame frame = left;
    return x < 320 ? static_cast<const uint16_t*>(frame.samples)[y * 320 + x] : 4095;
  });
  EXPECT_EQ(decideLook(both, {}, {0, 0, 320, 320}), decideLook(left, {}));
}

TEST(DecideSky, IsDarkAndNeutral) {
  const std::array<double, 3> level = {900, 1200, 700};
  for (const double deviation : {10, 60}) {
    const Frame frame = sky(VISTREL_RGGB, level, deviation);
    const Look look = decideLook(frame, {});
    ASSERT_EQ(look.transfer.curve, Curve::kAsinh);
    std::array<double, 3> above;
    for (size_t place : {0, 1, 3})
      above[kColours[place]] =
          (level[kColours[place]] - look.black[place]) * look.gains[kColours[place]];
    EXPECT_NEAR(above[0] / above[1], 1, 0.1);
    EXPECT_NEAR(above[2] / above[1], 1, 0.1);
    const double light = above[1] / 4096 / (look.white - look.black[1]) * look.exposure / 4096;
    const double luminance = 255 * CurveSketch(look.transfer, 65536).at(light);
    EXPECT_GE(luminance, 25);
    EXPECT_LE(luminance, 40);
  }
}

TEST(DecideSky, MonoToo) {
  const Look look = decideLook(sky(VISTREL_MONO, {0, 900, 0}, 20), {});
  EXPECT_EQ(look.transfer.curve, Curve::kAsinh);
  EXPECT_EQ(look.gains, (Gains{kLookOne, kLookOne, kLookOne}));
  EXPECT_LT(look.black[0], 900u);
  EXPECT_GE(look.black[0], 900u - 5 * 20);
}

TEST(DecideSky, OrdinaryFramesAreNone) {
  for (const double exposure : {0.05, 0.3, 1.0, 3.0})
    EXPECT_NE(decideLook(patches(12, 256, 4000, exposure), {}).transfer.curve, Curve::kAsinh);
}

// As narrow and dark as a sky, but smooth.
TEST(DecideSky, ShadowsAreNone) {
  Noise noise;
  const Frame frame(200, 200, 16, VISTREL_MONO, [&](uint32_t x, uint32_t y) {
    const double wave = std::sin(x / 17.0) + std::sin(y / 23.0);
    return 1500 + 100 * wave + 10 * noise.normal();
  });
  EXPECT_GE(255 * meanOf(frame, decideLook(frame, {})), 70);
}

// A dark frame was subtracted that is brighter than most of the sky.
TEST(DecideSky, SamplesMayBeClippedAtZero) {
  const Look look = decideLook(sky(VISTREL_RGGB, {70, 75, 80}, 85), {});
  EXPECT_EQ(look.transfer.curve, Curve::kAsinh);
  const Frame plain = sky(VISTREL_MONO, {0, 75, 0}, 85);
  EXPECT_EQ(decideLook(plain, {}, {4, 4, 60, 60}).transfer.curve, Curve::kAsinh);
}

// Half of the noise is clipped. One deviation is no brighter than a sky.
TEST(DecideSky, NoiseIsNotStretchedFurtherThanSkies) {
  const Look look = decideLook(sky(VISTREL_MONO, {0, 0, 0}, 30), {LookMode::kAstro, {}});
  ASSERT_EQ(look.transfer.curve, Curve::kAsinh);
  const double light = 30.0 / (look.white - look.black[0]) * look.exposure / kLookOne;
  const double luminance = 255 * CurveSketch(look.transfer, 65536).at(light);
  EXPECT_GE(luminance, 20);
  EXPECT_LE(luminance, 40);
}

TEST(DecideSky, KnownSamplesAboveZeroAreEnough) {
  // Dark current is subtracted already: half of the noise is clipped.
  EXPECT_EQ(decideLook(sky(VISTREL_RGGB, {60, 60, 60}, 30), {}).transfer.curve, Curve::kAsinh);
}

// Neither black nor white, wherever its level lies.
TEST(Decide, PlainSurfacesAreGray) {
  for (const double level : {100, 300, 500, 800})
    for (const double deviation : {0, 3})
      for (const uint32_t phase : {VISTREL_RGGB, VISTREL_MONO}) {
        Noise noise;
        const Frame frame(64, 48, 10, phase, [&](uint32_t x, uint32_t y) {
          const double part = phase == VISTREL_MONO || (x + y) % 2 ? 1 : 0.6;
          return level * part + deviation * noise.normal() + 0.5;
        });
        const double mean = 255 * meanOf(frame, decideLook(frame, {}));
        EXPECT_GE(mean, 70) << level << " " << deviation << " " << phase;
        EXPECT_LE(mean, 170) << level << " " << deviation << " " << phase;
      }
}

// A third of the picture is clipped and stays white.
TEST(Decide, OverexposedFramesAreDarkenedBesideTheirHighlights) {
  const Frame frame(90, 60, 10, VISTREL_MONO,
                    [](uint32_t x, uint32_t y) { return x < 30 ? 1023 : 200 + 5 * x + y % 7; });
  const Look look = decideLook(frame, {});
  EXPECT_LE(255 * meanOf(frame, look), 170);
  const double white = (1023.0 - look.black[0]) / (look.white - look.black[0]);
  EXPECT_GE(CurveSketch(look.transfer).at(white * look.exposure / 4096), 0.98);
}

TEST(Decide, FramesThatShowNothing) {
  Noise noise;
  const auto zero = [](uint32_t, uint32_t) { return 0u; };
  const auto largest = [](uint32_t, uint32_t) { return 1023u; };
  const auto middle = [](uint32_t, uint32_t) { return 500u; };
  const auto checkers = [](uint32_t x, uint32_t y) { return (x + y) % 2 * 1023; };
  const auto random = [&](uint32_t, uint32_t) { return noise.below(1024); };
  const std::function<uint32_t(uint32_t, uint32_t)> samples[] = {zero, largest, middle, checkers,
                                                                 random};
  const std::pair<uint32_t, uint32_t> sizes[] = {{1, 1}, {2, 2}, {50, 1}, {1, 50}, {40, 30}};
  for (const auto& sample : samples)
    for (const auto& [width, height] : sizes)
      for (const uint32_t phase : {VISTREL_RGGB, VISTREL_MONO})
        for (const auto mode :
             {LookMode::kAuto, LookMode::kLinear, LookMode::kSrgb, LookMode::kAstro}) {
          const Look look = decideLook(Frame(width, height, 10, phase, sample), {mode, {}});
          EXPECT_LT(*std::ranges::max_element(look.black), look.white);
          EXPECT_LE(look.white, 1023u);
          // The text has every limit of a look.
          const KnownLook known = parseLook(lookText(look)).known;
          EXPECT_EQ(known.gains, look.gains);
          EXPECT_EQ(known.exposure, look.exposure);
          EXPECT_EQ(known.transfer, look.transfer);
        }
}

TEST(Decide, SamplesOfAKnownLookAreNotRead) {
  Look look;
  look.black = {1, 2, 3, 4};
  look.white = 1000;
  const KnownLook known = parseLook(lookText(look)).known;
  vistrel_frame frame{};  // without samples
  frame.width = frame.height = 8;
  frame.bytes_per_sample = 2;
  frame.bits = 12;
  frame.phase = VISTREL_RGGB;
  EXPECT_EQ(decideLook(frame, {LookMode::kAstro, known}), look);
  KnownLook mono{known.black, known.white, {}, {}, known.exposure, known.transfer, {}};
  frame.phase = VISTREL_MONO;
  EXPECT_EQ(decideLook(frame, {LookMode::kAuto, mono}), look);
}

TEST(Decide, KnownLevelsMayContradictTheFrame) {
  KnownLook known;
  known.black = {1000, 1000, 1000, 1000};
  decideLook(patches(8, 16, 240), {LookMode::kAuto, known});
  decideLook(patches(8, 16, 240), {LookMode::kAstro, known});
  KnownLook dark;
  dark.white = 1;
  EXPECT_EQ(decideLook(patches(8, 16, 240), {LookMode::kAuto, dark}).black[0], 0u);
}

}  // namespace
}  // namespace vistrel::app
