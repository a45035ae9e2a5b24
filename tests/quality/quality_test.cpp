// The measures, by values worked out by hand, and what the directional demosaic promises on
// generated scenes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tests/quality/algorithms.h"
#include "tests/quality/measures.h"
#include "tests/quality/scenes.h"

namespace vistrel::quality {
namespace {

constexpr int kSide = 40;

Planes flat(float red, float green, float blue) {
  Planes planes(kSide, kSide);
  for (int y = 0; y < kSide; ++y)
    for (int x = 0; x < kSide; ++x)
      planes.at(0, x, y) = red, planes.at(1, x, y) = green, planes.at(2, x, y) = blue;
  return planes;
}

TEST(QualityMeasures, KnowTheColoursOfCielab) {
  const Lab white = labOf(1, 1, 1), gray = labOf(0.18, 0.18, 0.18), red = labOf(1, 0, 0);
  EXPECT_NEAR(white.l, 100, 1e-4);
  EXPECT_NEAR(std::hypot(white.a, white.b), 0, 1e-3);
  EXPECT_NEAR(gray.l, 49.4961, 1e-3);                       // 116 * cbrt(0.18) - 16
  EXPECT_NEAR(labOf(0.001, 0.001, 0.001).l, 0.9033, 1e-4);  // 24389 / 27 * 0.001
  EXPECT_NEAR(red.l, 53.24, 0.01);                          // the well-known values of sRGB's red
  EXPECT_NEAR(red.a, 80.09, 0.01);
  EXPECT_NEAR(red.b, 67.20, 0.01);
}

TEST(QualityMeasures, OfAPictureThatIsTooBright) {
  const Measures m = Truth(flat(0.5f, 0.5f, 0.5f), Light::kLinear).of(flat(0.5f, 0.6f, 0.5f));
  EXPECT_NEAR(m.cpsnr, 10 * std::log10(3 / 0.01), 1e-5);
  const Lab a = labOf(0.5, 0.5, 0.5), b = labOf(0.5, 0.6, 0.5);
  EXPECT_NEAR(m.difference, std::hypot(a.l - b.l, a.a - b.a, a.b - b.b), 1e-4);
  EXPECT_NEAR(m.worst, m.difference, 1e-4);
  EXPECT_EQ(m.zipper, 0);
}

// Every second column is brighter; in the truth, all are equal.
TEST(QualityMeasures, CountZippers) {
  const Planes truth = flat(0.5f, 0.5f, 0.5f);
  Planes picture = truth;
  for (int y = 0; y < kSide; ++y)
    for (int x = 0; x < kSide; x += 2) picture.at(1, x, y) = 0.6f;
  EXPECT_EQ(Truth(truth, Light::kLinear).of(picture).zipper, 100);
  EXPECT_EQ(Truth(picture, Light::kLinear).of(picture).zipper, 0);
}

TEST(QualityMeasures, FindColourNearTheCentre) {
  Planes picture = flat(0.4f, 0.4f, 0.4f);
  EXPECT_NEAR(chromaWithin(picture, 8, Light::kLinear).largest, 0, 1e-3);
  picture.at(0, 11, 11) = 1;  // 12 pixels from the centre
  EXPECT_NEAR(chromaWithin(picture, 8, Light::kLinear).largest, 0, 1e-3);
  const Chroma chroma = chromaWithin(picture, 13, Light::kLinear);
  const Lab red = labOf(1, 0.4, 0.4);
  EXPECT_NEAR(chroma.largest, std::hypot(red.a, red.b), 1e-3);
  EXPECT_GT(chroma.mean, 0.05);
  EXPECT_LT(chroma.mean, 0.2);
}

TEST(QualityMeasures, SeeDisplayedSamples) {
  const Image image = displayed(flat(0.2140f, 0, 1), Light::kLinear);
  EXPECT_EQ(image.pixels[0], 255);
  EXPECT_EQ(image.pixels[1], 0);
  EXPECT_EQ(image.pixels[2], 127);  // 0.214 is sRGB's 0.49997
}

TEST(QualityScenes, HaveTheNoiseThatIsAskedFor) {
  const Planes light = flat(0.5f, 0.5f, 0.5f), noisy = withNoise(light, 0.03, 5);
  double sum = 0, squares = 0;
  for (const std::vector<float>& channel : noisy.channels)
    for (const float v : channel) sum += v - 0.5, squares += (v - 0.5) * (v - 0.5);
  const double n = 3.0 * kSide * kSide;
  EXPECT_NEAR(sum / n, 0, 5 * 0.03 / std::sqrt(n));
  EXPECT_NEAR(std::sqrt(squares / n), 0.03, 0.03 * 5 / std::sqrt(2 * n));
  EXPECT_NE(noisy.channels[0], noisy.channels[1]);
}

const std::vector<NamedScene>& scenes() {
  static const std::vector<NamedScene> rendered = renderScenes();
  return rendered;
}

const std::vector<Truth>& truths() {
  static const std::vector<Truth> all = [] {
    std::vector<Truth> truths;
    for (const NamedScene& scene : scenes()) truths.emplace_back(scene.light, Light::kLinear);
    return truths;
  }();
  return all;
}

const Planes& rings() { return std::ranges::find(scenes(), "rings", &NamedScene::name)->light; }

// The zone plate's phase: at 96 pixels from the centre, a period is four pixels.
TEST(QualityScenes, HaveRingsOfKnownFrequency) {
  EXPECT_NEAR(96 * kRingsPerPixel, 0.25, 1e-12);
  int crossings = 0;
  const int y = kSceneSize / 2;
  for (int x = y + 80; x < y + 112; ++x)
    crossings += (rings().at(1, x, y) > 0.475f) != (rings().at(1, x + 1, y) > 0.475f);
  EXPECT_NEAR(crossings, 16, 1);
}

const Algorithm& algorithm(std::string_view name) {
  for (const Algorithm& a : kAlgorithms)
    if (a.name == name) return a;
  throw std::out_of_range(std::string(name));
}

struct Mean {
  double cpsnr = 0, difference = 0;
};

Mean meanOver(double noise, std::string_view name) {
  Mean mean;
  for (size_t i = 0; i < scenes().size(); ++i) {
    const Planes seen = withNoise(scenes()[i].light, noise, 21);
    const Measures m = truths()[i].of(demosaiced(seen, 12, algorithm(name)));
    mean.cpsnr += m.cpsnr / static_cast<double>(scenes().size());
    mean.difference += m.difference / static_cast<double>(scenes().size());
  }
  return mean;
}

TEST(QualityDirectional, IsCloserThanAhdAndEdgeWithAnyNoise) {
  for (const double noise : {0.0, 0.005, 0.01, 0.03}) {
    const Mean directional = meanOver(noise, "directional");
    for (const std::string_view other : {"ahd", "edge"}) {
      const Mean mean = meanOver(noise, other);
      EXPECT_GT(directional.cpsnr, mean.cpsnr) << other << ' ' << noise;
      EXPECT_LT(directional.difference, mean.difference) << other << ' ' << noise;
    }
  }
}

TEST(QualityDirectional, ShowsLessColourOnGrayRingsThanAhd) {
  const double radius = kGrayUpTo / kRingsPerPixel;
  const auto colourOf = [&](std::string_view name) {
    return chromaWithin(demosaiced(rings(), 12, algorithm(name)), radius, Light::kLinear).mean;
  };
  EXPECT_LT(colourOf("directional"), colourOf("ahd"));
}

constexpr int kPlateSize = 256;

// phaseAt: of gray waves, by the place from the centre of the picture.
template <class PhaseAt>
Planes grayWaves(const PhaseAt& phaseAt) {
  Planes planes(kPlateSize, kPlateSize);
  for (int y = 0; y < kPlateSize; ++y)
    for (int x = 0; x < kPlateSize; ++x) {
      const double phase = phaseAt(x - kPlateSize / 2.0, y - kPlateSize / 2.0);
      for (size_t c : {0, 1, 2})
        planes.at(c, x, y) = static_cast<float>(0.5 + 0.5 * std::cos(phase));
    }
  return planes;
}

void expectNoStrongerColourThanAhd(const Planes& gray, double radius) {
  for (const uint32_t bits : {8, 10, 12, 14, 16}) {
    const auto largest = [&](std::string_view name) {
      return chromaWithin(demosaiced(gray, bits, algorithm(name)), radius, Light::kLinear).largest;
    };
    EXPECT_LT(largest("directional"), largest("ahd")) << bits << " bits";
  }
}

// Up to 0.30 and up to 0.35 cycles a pixel.
TEST(QualityDirectional, HasNoPixelOfStrongerColourOnGrayPlatesThanAhd) {
  for (const auto& [x0, y0] : {std::pair{0.0, 0.0}, {0.5, 0.5}, {0.3, -0.3}, {0.0, -0.5}})
    for (const double start : {0.0, std::numbers::pi}) {
      SCOPED_TRACE(testing::Message() << x0 << ' ' << y0 << ' ' << start);
      const Planes plate = grayWaves([&, x0 = x0, y0 = y0](double x, double y) {
        const double squares = (x - x0) * (x - x0) + (y - y0) * (y - y0);
        return start + std::numbers::pi * squares / kPlateSize;
      });
      for (const double frequency : {0.30, 0.35})
        expectNoStrongerColourThanAhd(plate, frequency * kPlateSize);
    }
}

// At red or blue sites in dark lines at 45 degrees, all samples of green around are the same.
TEST(QualityDirectional, HasNoPixelOfStrongerColourOnGrayDiagonalsThanAhd) {
  for (const double frequency : {0.30, 0.32, 0.335, 0.35}) {
    SCOPED_TRACE(frequency);
    const Planes waves = grayWaves([&](double x, double y) {
      return std::numbers::pi * (1 + std::numbers::sqrt2 * frequency * (x + y));
    });
    expectNoStrongerColourThanAhd(waves, kPlateSize / 4.0);
  }
}

}  // namespace
}  // namespace vistrel::quality
