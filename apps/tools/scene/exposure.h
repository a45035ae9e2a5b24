// What every sensor in front of the scene does: it probes its pixels' areas, adds noise and
// delivers an image of samples.
#pragma once

#include <cstdint>
#include <cstring>

#include "apps/tools/scene/scene.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

constexpr int kProbes = 3;  // per pixel, in each direction

// Calls `take(colour)` for each probe of the pixel at (x, y).
template <class Take>
void probe(const Scene& scene, uint32_t x, uint32_t y, const Take& take) {
  for (int j = 0; j < kProbes; ++j)
    for (int i = 0; i < kProbes; ++i)
      take(scene.at(x + (i + 0.5) / kProbes, y + (j + 0.5) / kProbes));
}

// Noise of the pixel at (x, y): mean 0, standard deviation 1, nearly normal. Depends on no other
// pixel.
double normalNoise(uint64_t seed, uint32_t x, uint32_t y);

// A mono image without pixels, of 8 or 16 bits per sample.
Image emptyImage(uint32_t width, uint32_t height, uint32_t bits);

// An image of the samples that `sampleAt(x, y)` returns.
template <class SampleAt>
Image render(uint32_t width, uint32_t height, uint32_t bits, const SampleAt& sampleAt) {
  Image image = emptyImage(width, height, bits);
  image.pixels.resize(image.layout.bytes);
  const size_t sampleBytes = bits > 8 ? 2 : 1;
  uint8_t* to = image.pixels.data();
  for (uint32_t y = 0; y < height; ++y) {
    for (uint32_t x = 0; x < width; ++x, to += sampleBytes) {
      const auto sample = static_cast<uint16_t>(sampleAt(x, y));
      const auto byte = static_cast<uint8_t>(sample);
      sampleBytes == 2 ? std::memcpy(to, &sample, 2) : std::memcpy(to, &byte, 1);
    }
  }
  return image;
}

}  // namespace vistrel::app
