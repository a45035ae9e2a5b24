#include "apps/commands/scene_frame.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <string>

#include "apps/tools/scene/camera.h"

namespace vistrel::app {
namespace {

std::string titleOf(const SceneOptions& o, uint32_t phase) {
  std::string title = fmt::format("VISTREL  {}X{}  {} BIT  {}", o.size.width, o.size.height, o.bits,
                                  vistrel_phase_name(phase));
  std::transform(title.begin(), title.end(), title.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return title;
}

// From CIE XYZ to the camera's colours in daylight.
Matrix3 xyzMatrixOf(const Camera& camera) {
  return product(diagonal(camera.daylight), product(camera.matrix, srgbFromXyz()));
}

}  // namespace

DngCamera sceneCamera(const SceneOptions& o, uint32_t phase) {
  DngCamera dng = unknownCamera(phase, o.bits);
  dng.model = "Vistrel test scene";
  dng.knowsColours = true;
  dng.illuminant = kExifD65;
  dng.neutral = {1, 1, 1};
  if (!o.camera) return dng;
  dng.model += " in warm light";
  dng.neutral = kWarmCamera.neutral;
  dng.matrix = xyzMatrixOf(kWarmCamera);
  dng.white = levelOf(kWarmCamera.white, o.bits);
  for (size_t i = 0; i < 4; ++i) dng.black[i] = levelOf(kWarmCamera.black[i], o.bits);
  return dng;
}

Image sceneFrame(const SceneOptions& o, uint32_t phase) {
  const auto [width, height] = o.size;
  const Scene scene(width, height, titleOf(o, phase));
  const Sensor sensor{o.bits, phase, o.noise, o.seed};
  return o.camera ? expose(scene, width, height, sensor, kWarmCamera)
                  : expose(scene, width, height, sensor);
}

}  // namespace vistrel::app
