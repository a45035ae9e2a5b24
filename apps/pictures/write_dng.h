// Writing raw frames as DNG, which carries what other programs need to develop them.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "apps/colour/illuminant.h"
#include "apps/files/atomic_file.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

constexpr uint16_t kExifD65 = 21;  // EXIF's code of that light

// What a DNG says about the camera. Its defaults are those of an unknown camera, whose colours are
// taken to be linear sRGB.
struct DngCamera {
  uint32_t phase;                   // not VISTREL_MONO
  uint32_t white;                   // has as many bits as the samples
  std::array<uint32_t, 4> black{};  // of each place in the 2x2 block, row by row
  std::string model = "Unknown camera";
  std::optional<std::array<double, 3>> neutral{};  // red, green, blue of gray; the largest is 1
  Matrix3 matrix = srgbFromXyz();                  // from CIE XYZ to the camera's colours
  uint16_t illuminant = kExifD65;                  // EXIF's code; for which the matrix holds
  uint16_t orientation = 1;                        // TIFF's code
};

DngCamera unknownCamera(uint32_t phase, uint32_t bits);

// Notes on standard error that the colours of an unknown camera are taken to be sRGB.
void printAssumedColours(const std::filesystem::path& path);

// Whether -o means a DNG: its name ends in .dng, or is "dng:-" for standard output.
bool isDngName(const std::filesystem::path& path);

// Writes a frame, given as a mono image of 8 or 16 bits per sample, without compression. Neutral
// and matrix are rounded to multiples of 2^-16, which the file holds exactly. Throws ProgramError:
// input/output, or rejected if there are more samples than a DNG can hold.
void writeDng(const Image& samples, const DngCamera& camera, AtomicFile& file);

}  // namespace vistrel::app
