// Scenes in linear light, for measuring demosaic algorithms. Every machine draws the same.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/quality/planes.h"

namespace vistrel::quality {

constexpr int kSceneSize = 384;  // of its width and its height

// Rings around the centre, finer outward: the frequency at a distance of r pixels is
// r * kRingsPerPixel cycles per pixel.
constexpr double kRingsPerPixel = 0.5 / (kSceneSize / 2);
// They should stay gray up to this frequency, in cycles per pixel.
constexpr double kGrayUpTo = 0.35;

struct NamedScene {
  std::string name, content;  // content: of a scene whose name doesn't say it
  Planes light;
};

// A scene for each kind of detail.
std::vector<NamedScene> renderScenes();

// Zone plates of two colours. In the last two, green does not change.
std::vector<NamedScene> renderPlates();

// Adds noise of that standard deviation, in parts of full scale, and limits samples to the range.
Planes withNoise(const Planes& light, double deviation, uint64_t seed);

}  // namespace vistrel::quality
