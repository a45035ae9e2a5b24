// Picture files: PNG, TIFF, the PNM family, and headerless raw files.
#pragma once

#include <filesystem>

#include "apps/files/atomic_file.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

struct PictureType {
  const char* extension;
  uint32_t channels;  // 0: any
  bool many;          // may hold several images, one after the other
  void (*write)(const Image& image, AtomicFile& file);
};

// The type that the extension of `path` names; "-" is a PNM on standard output, "png:-" a PNG and
// so on. Throws ProgramError (usage) if the name specifies no type.
const PictureType& pictureType(const std::filesystem::path& path);

// Whether both write the same files.
inline bool isSameType(const PictureType& a, const PictureType& b) {
  return a.write == b.write && a.channels == b.channels;
}

// Reads a PNG of three channels of 8 bits, or of 16 if `maxBits` is 16, as blue, green, red.
// Throws ProgramError: input/output or rejected.
Image readPng(const std::filesystem::path& path, uint32_t maxBits = 8);

// A picture of 8 or 16 bits per sample; no sample is above `largest`.
struct ColourPicture {
  Image image;
  uint32_t largest;
};

// Reads a binary PPM, or a PNG as above of up to 16 bits. Throws ProgramError: input/output or
// rejected.
ColourPicture readColourPicture(const std::filesystem::path& path);

// The writers accept mono, BGR and ARGB pixels and throw ProgramError (input/output).
// PNG: samples of 9 to 15 bits are scaled to 16; the file says how many were significant.
void writePng(const Image& image, AtomicFile& file);
// TIFF without compression: samples of 9 to 15 bits are scaled to 16, as in a PNG.
void writeTiff(const Image& image, AtomicFile& file);
// PGM, PPM or PAM, depending on the channels; maxval is the largest value of the significant bits.
void writePnm(const Image& image, AtomicFile& file);
void writePam(const Image& image, AtomicFile& file);
// The image as the library delivers it: rows without padding, channels in the library's order,
// 16-bit samples in little-endian order.
void writeRaw(const Image& image, AtomicFile& file);

}  // namespace vistrel::app
