// A sensor in front of the scene: pixels with an area, colour filters, noise.
#pragma once

#include "apps/tools/scene/scene.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

struct Sensor {
  uint32_t bits;   // 8..16
  uint32_t phase;  // VISTREL_GRBG to VISTREL_MONO
  double noise;    // standard deviation at full light, in percent of full scale
  uint64_t seed;   // of the noise
};

// A mono image of the sensor's samples: bytes of 8 bits, else words.
Image expose(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor);

}  // namespace vistrel::app
