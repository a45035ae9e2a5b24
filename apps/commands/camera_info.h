// What info prints about the camera.
#pragma once

#include <nlohmann/json.hpp>

#include "apps/input/camera_colour.h"

namespace vistrel::app {

// Null for what the file does not specify.
template <class T>
nlohmann::ordered_json orNull(const std::optional<T>& value) {
  return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
}

// A line for each value that the file specifies.
void printCamera(const CameraMetadata& camera, const CameraColour& colour);

// All values; null for those that it doesn't specify.
nlohmann::ordered_json jsonOf(const CameraMetadata& camera, const CameraColour& colour);

}  // namespace vistrel::app
