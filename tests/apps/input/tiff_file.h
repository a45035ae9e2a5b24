// TIFFs and DNGs for the program to read, written through libtiff.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace vistrel {

using Sample = std::function<uint32_t(uint32_t x, uint32_t y)>;

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
  uint32_t pages = 1;  // sample(x, y + page * height)
};

void writeTiff(const std::filesystem::path& path, const TiffSpec& spec, const Sample& sample);

}  // namespace vistrel
