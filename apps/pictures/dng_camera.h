// What a DNG says about the camera of its frame.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "apps/colour/illuminant.h"

namespace vistrel::app {

constexpr uint16_t kExifUnknown = 0, kExifD65 = 21;  // EXIF's codes of lights

// Its defaults are those of an unknown camera, whose colours are taken to be linear sRGB.
struct DngCamera {
  uint32_t phase;                 // VISTREL_MONO: no DNG can hold the frame
  uint32_t white;                 // has as many bits as the samples
  std::array<double, 4> black{};  // of each place in the 2x2 block, row by row
  std::string model = "Unknown camera";
  std::optional<std::array<double, 3>> neutral{};  // red, green, blue of gray; the largest is 1
  Matrix3 matrix = srgbFromXyz();                  // from CIE XYZ to the camera's colours
  uint16_t illuminant = kExifUnknown;              // EXIF's code; for which the matrix holds
  uint16_t orientation = 1;                        // TIFF's code
  bool knowsColours = false;                       // or the matrix is an assumption
};

inline DngCamera unknownCamera(uint32_t phase, uint32_t bits) {
  return {.phase = phase, .white = (1u << bits) - 1};
}

}  // namespace vistrel::app
