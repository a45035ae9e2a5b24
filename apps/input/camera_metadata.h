// What a file says about its camera and its exposure.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/colour/illuminant.h"

namespace vistrel::app {

// The colours of a camera model under one illuminant.
struct Calibration {
  Matrix3 fromXyz;                    // to the colours of a reference camera
  Matrix3 individual = kIdentity;     // from those to the colours of this camera
  std::optional<double> temperature;  // of the illuminant, in kelvins
};

// Part of the frame.
struct Crop {
  uint32_t x, y, width, height;
};

struct CameraMetadata {
  std::optional<std::array<double, 4>> black;  // of the top left 2x2 block, row by row
  std::optional<double> white;
  std::optional<Vector3> neutral;          // red, green and blue of a white object
  std::optional<Chromaticity> light;       // the neutral's equivalent, if that is missing
  std::vector<Calibration> calibrations;   // at most two
  std::optional<Vector3> analogBalance;    // gains in the camera that the matrices don't include
  std::optional<uint32_t> orientation;     // TIFF's code, 1 to 8; frames keep the sensor's
  std::optional<Crop> crop;                // what the maker wants to be seen
  std::optional<double> baselineExposure;  // in stops
  std::optional<double> gain;              // in the camera's own unit
  std::optional<double> exposureTime;      // in seconds
  std::optional<double> iso, aperture;     // aperture: the f-number
  std::optional<double> focalLength;       // in millimetres
  std::optional<std::string> make, model;
  std::optional<std::string> date;  // 2026-11-22T18:06:29
};

// Removes what can't be true of a frame of this size, and adds a warning about each to `warnings`.
// Zero and less stand for "unknown" in exposure, ISO, aperture and focal length, without warning.
void dropInvalid(CameraMetadata& metadata, uint32_t width, uint32_t height,
                 std::vector<std::string>& warnings);

// A DNG must have a matrix. Forgets that of an unknown camera, which this program writes for no
// light: the code of an EXIF light source.
void forgetAssumptions(CameraMetadata& metadata, const std::string& software, uint32_t light);

// The black levels of the 2x2 block, of a pattern of any size, averaged at each place, plus
// `delta`.
std::array<double, 4> blackOfPattern(std::span<const double> pattern, uint32_t rows,
                                     uint32_t columns, double delta);

// Text of a file without control characters, leading and trailing spaces; nothing if that is empty.
std::optional<std::string> plainText(const std::string& text);

// 2026:11:22 18:06:29, or with other separators, as 2026-11-22T18:06:29; nothing if it isn't that.
std::optional<std::string> plainDate(const std::string& text);

}  // namespace vistrel::app
