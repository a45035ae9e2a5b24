// Picture files: PNG, JPEG, TIFF, the PNM family, NPY, DNG, and headerless raw files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "apps/files/atomic_file.h"
#include "apps/pictures/picture_details.h"
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
  bool frames;        // holds raw frames without changing a sample
  void (*write)(const Image& image, const PictureDetails& details, AtomicFile& file);
  // What comes before the first image of a film; null if nothing does.
  void (*begin)(const vistrel_layout& layout, const FrameRate& rate, AtomicFile& file) = nullptr;
};

// The type that the extension of `path` names, in any case; "-" is a PNM on standard output,
// "png:-" a PNG and so on. Throws ProgramError (usage) if the name specifies no type.
const PictureType& pictureType(const std::filesystem::path& path);

// The same where films are allowed too.
const PictureType& outputType(const std::filesystem::path& path);
// The same for a raw frame.
const PictureType& frameType(const std::filesystem::path& path);

// The type that holds raw frames only.
inline bool isDng(const PictureType& type) { return std::string_view(type.extension) == ".dng"; }

// What users should know about a file of the type.
std::vector<std::string> remarksOn(const PictureType& type, const vistrel_layout& layout,
                                   const PictureDetails& details);
void printRemarks(const std::filesystem::path& path, const vistrel_layout& layout,
                  const PictureDetails& details);

// Whether both write the same files.
inline bool isSameType(const PictureType& a, const PictureType& b) {
  return a.write == b.write && a.channels == b.channels;
}

// Throws ProgramError (rejected) if no file of the type can hold such an image.
void checkHolds(const PictureType& type, const vistrel_layout& layout,
                const PictureDetails& details);

// Writes a picture, which appears when the caller commits it. Throws ProgramError.
std::unique_ptr<AtomicFile> writePicture(const Image& image, const PictureDetails& details,
                                         const std::filesystem::path& to);
// Writes a picture that appears complete or not at all. Throws ProgramError.
void savePicture(const Image& image, const PictureDetails& details,
                 const std::filesystem::path& to);

// Reads a PNG of three channels of 8 bits, or of 16 if `maxBits` is 16, as blue, green, red.
// Throws ProgramError: input/output or rejected.
Image readPng(const std::filesystem::path& path, uint32_t maxBits = 8);

// Whether it is a PNG in which this program made a picture of a frame: not a raw frame, and not
// one that other programs have written.
bool isOwnPicture(const std::filesystem::path& path);

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
void writeY4m(const Image& image, const PictureDetails& details, AtomicFile& file);

// The writers accept mono, RGB and RGBA pixels, without gaps between rows, and throw ProgramError:
// input/output, or rejected if the format can't hold the image.

// Samples of 9 to 15 bits are scaled to 16; sBIT says how many were significant.
void writePng(const Image& image, const PictureDetails& details, AtomicFile& file);
// 8 bits, without alpha.
void writeJpeg(const Image& image, const PictureDetails& details, AtomicFile& file);
// Samples of 9 to 15 bits are scaled to 16, as in a PNG.
void writeTiff(const Image& image, const PictureDetails& details, AtomicFile& file);
// PGM, PPM or PAM, depending on the channels; maxval is the largest value of the significant bits.
// A comment in a PGM tells the phase of a raw frame.
void writePnm(const Image& image, const PictureDetails& details, AtomicFile& file);
void writePam(const Image& image, const PictureDetails& details, AtomicFile& file);
// The array format of NumPy: height, width and, if there are several, channels.
void writeNpy(const Image& image, const PictureDetails& details, AtomicFile& file);
// A mono image as raw frame of details.camera, without compression. Neutral and matrix are rounded
// to multiples of 2^-16, which the file holds exactly.
void writeDng(const Image& image, const PictureDetails& details, AtomicFile& file);
// The pixels alone, in the caller's order; 16-bit samples in little-endian order.
void writeRaw(const Image& image, const PictureDetails& details, AtomicFile& file);

}  // namespace vistrel::app
