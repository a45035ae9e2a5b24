// Pictures on disk: PNG, PPM, PGM.
#pragma once

#include <filesystem>

#include "apps/output/atomic_file.h"
#include "host/vistrel.hpp"

namespace vistrel::app {

struct PictureType {
  const char* extension;
  uint32_t channels;  // 0: any
  void (*write)(const Image& image, AtomicFile& file);
};

// By the name's extension. Throws Failure (usage) for any but .png, .ppm and .pgm.
const PictureType& pictureType(const std::filesystem::path& path);

// A PNG of three channels of 8 bits as BGR24. Throws Failure: input/output, or rejected.
Image readPng(const std::filesystem::path& path);

// The writers take mono and BGR pixels and throw Failure (input/output).
// PNG: samples of 9 to 15 bits are spread over 16, and the file tells how many were significant.
void writePng(const Image& image, AtomicFile& file);
// PPM or PGM by the image's channels: maxval is the largest value of the significant bits.
void writePnm(const Image& image, AtomicFile& file);

}  // namespace vistrel::app
