// The source frames: a smooth coloured scene with noise, seen through an RGGB mosaic.
#pragma once

#include <cstdint>
#include <string>

#include "bench/buffer.h"

namespace vistrel::core::bench {

struct FrameSize {
  const char* name;
  unsigned width, height;
  size_t pixels() const { return size_t{width} * height; }
};

constexpr FrameSize kFrameSizes[] = {{"1080p", 1920, 1080}, {"12MP", 4096, 3000}};

struct Frame {
  FrameSize size;
  unsigned wordBits;  // significant bits of a word
  Buffer<uint16_t> words;
  Buffer<uint8_t> bytes;  // the words' high bits
};

// Samples stay below 1 / factor of the full scale: binning multiplies them by its factor, and
// nothing is to clamp.
Frame makeFrame(const FrameSize& size, unsigned factor, unsigned wordBits);

}  // namespace vistrel::core::bench
