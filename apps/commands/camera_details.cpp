#include "apps/commands/camera_details.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "apps/colour/matrix3.h"

namespace vistrel::app {
namespace {

// EXIF's codes of lights, by their temperatures in kelvins.
constexpr struct {
  double temperature;
  uint16_t code;
} kLights[] = {{2856, 17}, {5003, 23}, {5503, 20}, {6504, kExifD65}, {7504, 22}};

double distanceFromD65(const Calibration& calibration) {
  return std::abs(calibration.temperature.value_or(0) - 6504);
}

uint16_t lightOf(double temperature) {
  return std::ranges::min_element(
             kLights, {},
             [temperature](const auto& light) { return std::abs(light.temperature - temperature); })
      ->code;
}

void addColours(const CameraMetadata& m, DngCamera& camera) {
  if (m.neutral) {
    camera.neutral = m.neutral;
    const double largest = std::ranges::max(*m.neutral);
    for (double& part : *camera.neutral) part /= largest;
  }
  if (m.calibrations.empty()) return;
  const Calibration& c = *std::ranges::min_element(m.calibrations, {}, distanceFromD65);
  camera.matrix = product(c.individual, c.fromXyz);
  if (m.analogBalance) camera.matrix = product(diagonal(*m.analogBalance), camera.matrix);
  camera.illuminant = c.temperature ? lightOf(*c.temperature) : kExifD65;
  camera.knowsColours = true;
}

}  // namespace

Shot shotOf(const CameraMetadata& m) {
  return {m.make, m.model, m.date, m.exposureTime, m.iso, m.aperture, m.focalLength};
}

DngCamera dngCameraOf(const FrameFile& file) {
  const CameraMetadata& m = file.description().camera;
  const vistrel_frame& frame = file.frame();
  DngCamera camera = unknownCamera(frame.phase, frame.bits);
  // The significant bits follow from the white level.
  const auto white = static_cast<uint32_t>(std::clamp(m.white.value_or(0), 0.0, 65535.0));
  if (static_cast<uint32_t>(std::bit_width(white)) == frame.bits) camera.white = white;
  if (m.black) camera.black = *m.black;
  if (m.model) camera.model = m.make ? *m.make + " " + *m.model : *m.model;
  camera.orientation = static_cast<uint16_t>(m.orientation.value_or(1));
  addColours(m, camera);
  return camera;
}

}  // namespace vistrel::app
