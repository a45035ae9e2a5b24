// Pictures on disk: PNG, TIFF, the PNM family, and bare samples.
#pragma once

#include <filesystem>

#include "apps/files/atomic_file.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

struct PictureType {
  const char* extension;
  uint32_t channels;  // 0: any
  bool many;          // images may stand one behind the other
  void (*write)(const Image& image, AtomicFile& file);
};

// By the name's extension; "-" is any PNM on standard output, "png:-" a PNG and so on. Throws
// Failure (usage) for names that tell no type.
const PictureType& pictureType(const std::filesystem::path& path);

// Whether both stand for the same files.
inline bool isSameType(const PictureType& a, const PictureType& b) {
  return a.write == b.write && a.channels == b.channels;
}

// A PNG of three channels of 8 bits, or of `maxBits` if that is 16, as blue, green, red. Throws
// Failure: input/output, or rejected.
Image readPng(const std::filesystem::path& path, uint32_t maxBits = 8);

// A picture of 8 or 16 bits whose samples are at most `largest`.
struct ColourPicture {
  Image image;
  uint32_t largest;
};

// A binary PPM, or a PNG as above of up to 16 bits. Throws Failure: input/output, or rejected.
ColourPicture readColourPicture(const std::filesystem::path& path);

// The writers take mono, BGR and ARGB pixels and throw Failure (input/output).
// PNG: samples of 9 to 15 bits are spread over 16, and the file tells how many were significant.
void writePng(const Image& image, AtomicFile& file);
// TIFF without compression: samples of 9 to 15 bits are spread over 16, as in a PNG.
void writeTiff(const Image& image, AtomicFile& file);
// PGM, PPM or PAM by the image's channels: maxval is the largest value of the significant bits.
void writePnm(const Image& image, AtomicFile& file);
void writePam(const Image& image, AtomicFile& file);
// The image's bytes as the library has them: rows without padding, channels in the library's order,
// words with the low byte first.
void writeRaw(const Image& image, AtomicFile& file);

}  // namespace vistrel::app
