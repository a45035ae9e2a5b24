// The source frames: a smooth coloured scene with noise, under an RGGB mosaic.
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

constexpr FrameSize kFrameSizes[] = {
    {"VGA", 640, 480}, {"1080p", 1920, 1080}, {"12MP", 4096, 3000}};

struct Frame {
  FrameSize size;
  unsigned significantBits;  // of samples16
  Buffer<uint16_t> samples16;
  Buffer<uint8_t> samples8;  // the high bits of samples16
};

// Samples stay below 1 / factor of full scale: binning multiplies them by its factor, and results
// must not be clamped.
Frame makeFrame(const FrameSize& size, unsigned factor, unsigned significantBits);

}  // namespace vistrel::core::bench
