#include "apps/tools/scene/sensor.h"

#include <cstring>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr int kProbes = 3;  // per pixel, in each direction

Rgb average(const Scene& scene, uint32_t x, uint32_t y) {
  Rgb sum{0, 0, 0};
  for (int j = 0; j < kProbes; ++j)
    for (int i = 0; i < kProbes; ++i)
      sum = sum + scene.at(x + (i + 0.5) / kProbes, y + (j + 0.5) / kProbes);
  return sum * (1.0 / (kProbes * kProbes));
}

double filtered(Rgb light, uint32_t phase, uint32_t x, uint32_t y) {
  if (phase == VISTREL_MONO) return luma(light);
  const double channels[] = {light.r, light.g, light.b};
  return channels[vistrel_colour_at(phase, x, y)];
}

// splitmix64: a pure function, so that the noise of a pixel depends on no other pixel.
uint64_t scramble(uint64_t v) {
  v += 0x9E3779B97F4A7C15;
  v = (v ^ (v >> 30)) * 0xBF58476D1CE4E5B9;
  v = (v ^ (v >> 27)) * 0x94D049BB133111EB;
  return v ^ (v >> 31);
}

// Mean 0, standard deviation 1, nearly normal: the sum of four uniformly distributed numbers.
double normal(uint64_t seed, uint32_t x, uint32_t y) {
  const uint64_t v = scramble(scramble(seed) ^ (uint64_t{y} << 32 | x));
  const double sum =
      static_cast<double>((v & 65535) + (v >> 16 & 65535) + (v >> 32 & 65535) + (v >> 48));
  return (sum / 65535 - 2) * std::sqrt(3.0);
}

// Shot noise: the deviation grows with the square root of the light, above a floor.
double noisy(double light, const Sensor& sensor, uint32_t x, uint32_t y) {
  const double deviation = sensor.noise / 100 * std::sqrt(std::max(light, 0.02));
  return light + deviation * normal(sensor.seed, x, y);
}

vistrel_layout layoutOf(uint32_t width, uint32_t height, uint32_t bits) {
  const vistrel_frame frame{nullptr,      0, 0, width, height, bits > 8 ? 2u : 1u, bits,
                            VISTREL_MONO, 0, 0, {}};
  vistrel_conversion conversion = defaultConversion(frame);
  if (bits > 8) conversion.format = VISTREL_MONO16;
  return vistrel::layoutOf(frame, conversion);
}

}  // namespace

Image expose(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor) {
  Image image{layoutOf(width, height, sensor.bits), {}};
  image.pixels.resize(image.layout.bytes);
  const size_t sampleBytes = sensor.bits > 8 ? 2 : 1;
  const double fullScale = (1 << sensor.bits) - 1;
  uint8_t* to = image.pixels.data();
  for (uint32_t y = 0; y < height; ++y) {
    for (uint32_t x = 0; x < width; ++x, to += sampleBytes) {
      const double light = filtered(average(scene, x, y), sensor.phase, x, y);
      const double value = std::clamp(noisy(light, sensor, x, y), 0.0, 1.0) * fullScale + 0.5;
      const auto sample = static_cast<uint16_t>(value);
      const auto byte = static_cast<uint8_t>(sample);
      sampleBytes == 2 ? std::memcpy(to, &sample, 2) : std::memcpy(to, &byte, 1);
    }
  }
  return image;
}

}  // namespace vistrel::app
