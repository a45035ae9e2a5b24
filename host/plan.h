// A conversion as the library will run it: region, phase, sizes.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

// The distance between a frame's rows in bytes, and the bytes from its first sample to its last.
uint64_t strideOf(const vistrel_frame& frame);
uint64_t bytesOf(const vistrel_frame& frame);

struct Plan {
  const Format* format;
  const Format* native;    // what the library writes
  Repack repack;           // from there to the format; null where they are the same
  int64_t x, y;            // first sample to convert; with padding it may lie outside the frame
  uint32_t width, height;  // samples to convert: whole bins, padding included
  uint32_t pad;            // pixels on each side of the native image that are cut off
  uint32_t phase;          // of the sample at x, y; not read for mono frames
  uint32_t bits;           // significant bits of a sample that the library gets
  uint32_t nDstBits;       // of all channels together, without alpha
  uint32_t nativeWidth, nativeHeight;  // pixels
  size_t nativeRowBytes, nativeBytes;
  bool readsBeside;  // the algorithm reads samples outside the region
  vistrel_layout layout;
};

// Checks everything but samples and memory. Throws Rejection.
Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion);

// Checks the memory of a frame. Throws Rejection.
void checkSamples(const vistrel_frame& frame);

// Checks the memory of frame and image. Returns the image's stride in bytes. Throws Rejection.
size_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image);

}  // namespace vistrel::host
