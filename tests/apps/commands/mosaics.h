// A picture for the program to read, and its mosaics.
#pragma once

#include <gtest/gtest.h>

#include <png.h>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {

inline constexpr uint32_t kFrameWidth = 7, kFrameHeight = 5;

// A different value for each position and channel.
inline uint32_t colourAt(uint32_t x, uint32_t y, uint32_t channel, uint32_t most) {
  return (x * 7919 + y * 104729 + channel * 1299709) % (most + 1);
}

// Red, green, blue; 8 or 16 bits.
template <class Sample>
void writePicture(const std::filesystem::path& path, uint32_t format) {
  constexpr uint32_t kMax = sizeof(Sample) == 1 ? 255 : 65535;
  std::vector<Sample> samples;
  for (uint32_t y = 0; y < kFrameHeight; ++y)
    for (uint32_t x = 0; x < kFrameWidth; ++x)
      for (uint32_t c = 0; c < 3; ++c)
        samples.push_back(static_cast<Sample>(colourAt(x, y, c, kMax)));
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = kFrameWidth;
  image.height = kFrameHeight;
  image.format = format;
  ASSERT_TRUE(png_image_write_to_file(&image, path.c_str(), 0, samples.data(), 0, nullptr));
}

inline std::string mosaicPgm(const std::string& phase, uint32_t most, uint32_t maxval) {
  const auto sample = [&](uint32_t x, uint32_t y) {
    const size_t channel = std::string("rgb").find(phase[2 * (y % 2) + x % 2]);
    const double colour = colourAt(x, y, static_cast<uint32_t>(channel), most);
    return static_cast<uint32_t>(colour * maxval / most + 0.5);
  };
  return pgm(kFrameWidth, kFrameHeight, maxval, sample, phase);
}

}  // namespace vistrel
