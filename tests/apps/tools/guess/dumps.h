// Headerless files as cameras dump them, drawn at random from real frames.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "apps/names/pixel_format.h"

namespace vistrel {

// A frame of samples.
struct SampleFrame {
  std::string name;
  uint32_t width, height, bits, phase;
  std::vector<uint16_t> samples;
};

// The real frames of both folders; none without the test data.
std::vector<SampleFrame> realFrames();

// How a dump lies in its file.
struct Dump {
  uint32_t x, y, width, height;  // the crop
  app::PixelFormat format;       // its bits are filled, even if the frame has fewer
  size_t padding;                // bytes after each row
  uint32_t filling;              // of padding and header: 0 zeros, 1 ones, 2 noise, 3 text
  size_t header;                 // bytes
  uint32_t frames;

  size_t stride() const;
  std::string text() const;
};

// Draws a dump of a frame: `kind` 0 is plain, 1 padded, 2 with a header, 3 of several frames, 4
// any mixture.
Dump drawDump(const SampleFrame& frame, uint32_t kind, std::mt19937& random);

std::vector<uint8_t> bytesOf(const SampleFrame& frame, const Dump& dump);

}  // namespace vistrel
