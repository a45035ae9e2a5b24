// A camera in front of the scene: it records linear light, with all that a raw converter has to
// undo. From the scene's colours on, every machine computes the same samples.
#pragma once

#include <array>
#include <cstdint>

#include "apps/tools/scene/sensor.h"

namespace vistrel::app {

struct Camera {
  // From linear sRGB to the camera's red, green and blue, row by row. Gray stays gray.
  std::array<double, 9> matrix;
  std::array<double, 3> neutral;   // its red, green and blue of gray, in the scene's light
  std::array<double, 3> daylight;  // the same in the light D65
  double exposure;                 // the signal of white in the centre; the sensor clips at 1
  double cornerLoss;               // of light, to vignetting
  double readNoise;                // in parts of the photon noise at full scale
  // Of 16 bits; fewer are their highest ones.
  std::array<uint32_t, 4> black;  // of each place in the 2x2 block, row by row
  uint32_t white;                 // what the sensor clips at
};

// A camera in warm light.
inline constexpr Camera kWarmCamera{
    .matrix = {0.70, 0.25, 0.05, 0.15, 0.70, 0.15, 0.03, 0.22, 0.75},
    .neutral = {0.75, 1, 0.4375},
    .daylight = {0.5625, 1, 0.75},
    .exposure = 1.25,
    .cornerLoss = 0.3,
    .readNoise = 0.04,
    .black = {4032, 4096, 4112, 4176},
    .white = 61440,
};

// A level of 16 bits in samples of `bits` bits.
constexpr uint32_t levelOf(uint32_t level, uint32_t bits) { return level >> (16 - bits); }

// The linear light of a display colour: sRGB's transfer function.
double linearOf(double display);

// The samples as a mono image. `sensor` has a phase with colour filters; its noise is that of
// photons.
Image expose(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor,
             const Camera& camera);

}  // namespace vistrel::app
