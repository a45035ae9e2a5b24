// From a camera's colours to sRGB, by what the file says about the camera.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "apps/input/camera_metadata.h"

namespace vistrel::app {

struct CameraColour {
  // Red, green, blue in 1/4096; the smallest is 1. They make the neutral gray.
  std::optional<std::array<uint32_t, 3>> gains;
  // Row by row in 1/4096, from colours with these gains to linear sRGB. The sum of each row is 1,
  // so that gray stays gray.
  std::optional<std::array<int32_t, 9>> matrix;
  std::optional<double> temperature;  // of the light, in kelvins
  std::string fault;                  // why there is no matrix, although the file has calibrations
};

// The metadata must have passed dropInvalid(). Without a neutral there are no gains, and the matrix
// is that for daylight, D65.
//
// The neutral's chromaticity is found by iteration, with matrices interpolated linearly in
// reciprocal temperature, as the format DNG 1.4 defines it.
CameraColour cameraColour(const CameraMetadata& metadata);

}  // namespace vistrel::app
