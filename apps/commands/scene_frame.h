// The test scene as a raw frame, and the camera that took it.
#pragma once

#include <cstdint>
#include <optional>

#include "apps/options/geometry.h"
#include "apps/pictures/dng_camera.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

struct SceneOptions {
  Size size{1536, 1024};
  uint32_t bits = 12;
  std::optional<uint32_t> phase;
  bool camera = false;
  double noise = 0.5;
  uint64_t seed = 1;
};

// The samples as a mono image.
Image sceneFrame(const SceneOptions& options, uint32_t phase);

DngCamera sceneCamera(const SceneOptions& options, uint32_t phase);

}  // namespace vistrel::app
