// A conversion as the library will do it: region, phase, amounts.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

// The distance between a frame's rows in bytes, and the bytes from its first sample to its last.
uint64_t strideOf(const vistrel_frame& frame);
uint64_t bytesOf(const vistrel_frame& frame);

struct Plan {
  const Format* format;
  const Format* made;      // what the library makes
  Finish finish;           // from there to the format; null where they are the same
  int64_t x, y;            // first sample that is converted; it may lie in front of the frame
  uint32_t width, height;  // samples that are converted: whole bins, padding included
  uint32_t pad;            // pixels of the made image on each side that are cut off
  uint32_t phase;          // of the sample at x, y; not read for mono frames
  uint32_t bits;           // significant ones of a sample that the library gets
  uint32_t nDstBits;       // all channels together, without alpha
  uint32_t madeWidth, madeHeight;  // pixels
  size_t madeRowBytes, madeBytes;
  bool readsBeside;  // the algorithm looks at what lies beside the region
  vistrel_layout layout;
};

// Checks all but samples and memory. Throws Refusal.
Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion);

// Checks the memory of a frame. Throws Refusal.
void checkSamples(const vistrel_frame& frame);

// Checks the memory of frame and image. Returns the image's stride in bytes.
size_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image);

}  // namespace vistrel::host
