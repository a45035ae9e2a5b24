// TIFFs and DNGs for the program to read, written through libtiff.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vistrel {

using Sample = std::function<uint32_t(uint32_t x, uint32_t y)>;

// Tags of any number of values, by their type for libtiff.
struct TiffTags {
  std::map<uint32_t, std::vector<float>> rationals;  // counted: ColorMatrix1 and others
  std::map<uint32_t, std::vector<float>> pairs;      // of a fixed count: AsShotWhiteXY, DefaultCrop
  std::map<uint32_t, double> numbers;                // a single rational
  std::map<uint32_t, uint16_t> codes;
  std::map<uint32_t, const char*> texts;
};

struct TiffSpec {
  uint32_t width = 7, height = 5, bits = 12;
  const char* mode = "w";              // "wb": big endian
  std::vector<uint8_t> cfa;            // empty: gray
  uint32_t compression = 1, tile = 0;  // tile size; 0: strips
  uint32_t rowsPerStrip = 2;
  uint32_t samplesPerPixel = 1, sampleFormat = 1;
  std::vector<uint32_t> activeArea = {};  // top, left, bottom, right
  uint32_t white = 0;                     // 0: unspecified
  float black = -1;                       // negative: unspecified
  uint16_t orientation = 0;               // of the first directory; 0: unspecified
  bool isDng = false, inSubdirectory = false, isReduced = false;
  std::vector<uint16_t> linearization = {};
  bool isInverse = false;                       // gray of which 0 is white
  std::string encoded = {};                     // a single strip, written as it is
  uint32_t pages = 1;                           // sample(x, y + page * height)
  TiffTags camera = {}, frame = {}, exif = {};  // in the first directory, the frame's, EXIF's
  std::array<uint16_t, 2> blackSize = {};       // BlackLevelRepeatDim; 0: unspecified
  std::vector<uint16_t> isoSpeeds = {};         // in the EXIF directory
};

// A DNG of 64x48 samples of 16 bits, which LibRaw reads as well.
inline TiffSpec smallDng(const std::vector<uint8_t>& cfa, uint32_t white) {
  TiffSpec spec;
  spec.width = 64;
  spec.height = 48;
  spec.bits = 16;
  spec.cfa = cfa;
  spec.isDng = true;
  spec.white = white;
  return spec;
}

void writeTiff(const std::filesystem::path& path, const TiffSpec& spec, const Sample& sample);

}  // namespace vistrel
