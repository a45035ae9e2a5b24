// Picture files: PNG, TIFF, the PNM family, and headerless raw files.
#pragma once

#include <filesystem>

#include "apps/files/atomic_file.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// Frames per second.
struct FrameRate {
  uint32_t frames = 25, seconds = 1;
};

struct PictureType {
  const char* extension;
  uint32_t channels;  // 0: any
  bool many;          // may hold several images, one after the other
  void (*write)(const Image& image, AtomicFile& file);
  // What comes before the first image of a film; null if nothing does.
  void (*begin)(const vistrel_layout& layout, const FrameRate& rate, AtomicFile& file) = nullptr;
};

// The type that the extension of `path` names, in any case; "-" is a PNM on standard output,
// "png:-" a PNG and so on. Throws ProgramError (usage) if the name specifies no type.
const PictureType& pictureType(const std::filesystem::path& path);

// The same where films are allowed too.
const PictureType& outputType(const std::filesystem::path& path);

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

// Y4M: images of bytes, as I420, I444 or MONO8. Luma and chroma are those of BT.709 in limited
// range.
void beginY4m(const vistrel_layout& layout, const FrameRate& rate, AtomicFile& file);
void writeY4m(const Image& image, AtomicFile& file);

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
