// An ideal sensor in front of the scene: pixels with an area, colour filters, noise. It takes
// display colours for light, so its frames look right without a transfer curve.
#pragma once

#include "apps/tools/scene/scene.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

struct Sensor {
  uint32_t bits;   // 8..16
  uint32_t phase;  // VISTREL_GRBG to VISTREL_MONO
  double noise;    // standard deviation at full scale, in percent of it
  uint64_t seed;   // of the noise
};

// The sensor's samples as a mono image, of 8 or 16 bits per sample.
Image expose(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor);

}  // namespace vistrel::app
