// Every algorithm on every available frame of a real sensor.
#include "tests/real_frames.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using Means = std::array<double, 3>;  // blue, green, red, as parts of full scale

Means meansOf(const Mosaic& mosaic, const std::string& phase, uint32_t bits) {
  std::array<double, 3> sums{}, counts{};
  for (uint32_t y = 0; y < mosaic.height; ++y)
    for (uint32_t x = 0; x < mosaic.width; ++x) {
      const size_t channel = std::string("bgr").find(phase[2 * (y & 1) + (x & 1)]);
      sums[channel] += mosaic.at(static_cast<int>(x), static_cast<int>(y));
      ++counts[channel];
    }
  for (size_t c = 0; c < 3; ++c) sums[c] /= counts[c] * ((1 << bits) - 1);
  return sums;
}

Means meansOf(const Image& image) {
  const std::vector<uint16_t> samples =
      image.layout.bits > 8 ? samples16Of(image)
                            : std::vector<uint16_t>(image.pixels.begin(), image.pixels.end());
  Means sums{};
  for (size_t i = 0; i < samples.size(); ++i) sums[i % 3] += samples[i];
  for (double& sum : sums)
    sum /= static_cast<double>(samples.size() / 3) * ((1 << image.layout.bits) - 1);
  return sums;
}

// The samples of a frame and its description.
struct RealFrame {
  std::vector<uint16_t> samples;
  std::vector<uint8_t> bytes;
  vistrel_frame frame;

  RealFrame(const Mosaic& m, const FrameName& name) {
    for (uint32_t y = 0; y < m.height; ++y)
      for (uint32_t x = 0; x < m.width; ++x)
        samples.push_back(static_cast<uint16_t>(m.at(static_cast<int>(x), static_cast<int>(y))));
    bytes.assign(samples.begin(), samples.end());
    uint32_t phase = 0;
    while (name.phase != vistrel_phase_name(phase)) ++phase;
    frame = name.bits == 8 ? frameOf(bytes, m.width, m.height, phase)
                           : frameOf(samples, m.width, m.height, name.bits, phase);
  }
};

// The mean of each colour is that of the sensor, within a hundredth of full scale.
TEST(RealFrames, EveryAlgorithmKeepsTheMeanOfEveryColour) {
  const auto frames = framesIn("bayer");
  if (frames.empty()) GTEST_SKIP() << "VISTREL_DATA names no folder with bayer/";
  for (const auto& path : frames) {
    const FrameName name = frameNameOf(path.stem());
    const Mosaic mosaic(path);
    const RealFrame real(mosaic, name);
    const Means expected = meansOf(mosaic, name.phase, name.bits);
    for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
      vistrel_conversion c = defaultConversion(real.frame);
      c.algorithm = a->code;
      c.truncate_to = a->max_bits;
      if (name.bits > 8) c.format = VISTREL_BGR48;
      const Image image = convert(real.frame, c);
      ASSERT_EQ(image.layout.width, mosaic.width);
      ASSERT_EQ(image.layout.height, mosaic.height);
      const Means means = meansOf(image);
      for (size_t channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(means[channel], expected[channel], 0.01) << path << ", " << a->name << ", "
                                                             << "bgr"[channel];
    }
  }
}

}  // namespace
}  // namespace vistrel
