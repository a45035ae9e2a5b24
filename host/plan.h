// A conversion as the engine will run it: region, phase, sizes.
#pragma once

#include "host/overlap.h"
#include "host/tables.h"

namespace vistrel::host {

// Samples per pixel.
inline uint32_t channelsOf(const vistrel_frame& frame) {
  return frame.phase == VISTREL_BGR ? 3 : 1;
}
// The bits below a sample's significant ones.
inline uint32_t belowOf(const vistrel_frame& frame) {
  return frame.alignment == VISTREL_HIGH_BITS ? 8 * frame.bytes_per_sample - frame.bits : 0;
}
inline bool isMosaic(const vistrel_frame& frame) { return frame.phase < VISTREL_MONO; }

// The bytes of a row, the distance between rows, and the bytes from a frame's first sample to its
// last.
uint64_t rowBytesOf(const vistrel_frame& frame);
uint64_t strideOf(const vistrel_frame& frame);
uint64_t bytesOf(const vistrel_frame& frame);

struct Plan {
  const Format* format;
  bool rawGray;             // libVistrel's own gray
  bool throughBuffer;       // its binned gray mixes rows of the whole image
  size_t sampleBytes;       // bytes per sample of the engine
  size_t nativePixelBytes;  // bytes per pixel before conversion to the format
  int64_t x, y;             // first sample to convert; with padding it may lie outside the frame
  uint32_t width, height;   // samples to convert: whole bins, padding included
  uint32_t pad;             // pixels that are dropped on each side of the result
  uint32_t phase;           // of the sample at x, y; unused for mono frames
  uint32_t bits;            // significant bits of a sample after the truncation
  vistrel_layout layout;
};

// Rows first .. end - 1 of the image.
struct ImageRows {
  uint32_t first, end;
};
inline ImageRows allRows(const Plan& plan) { return {0, plan.layout.height}; }

// The region to convert, unrounded. Throws Rejection if it is empty or extends beyond the frame.
vistrel_region regionOf(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Checks everything but samples and memory. Throws Rejection.
Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion);

// Checks the memory of a frame. Throws Rejection.
void checkSamples(const vistrel_frame& frame);

struct CheckedImage {
  ptrdiff_t stride;  // bytes
  ByteRows rows;     // that are written
};

// Checks the memory of an image. Throws Rejection.
CheckedImage checkImage(const Plan& plan, const vistrel_image* image);

// Checks the memory of frame and image. Returns the image's stride in bytes. Throws Rejection.
ptrdiff_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image);

}  // namespace vistrel::host
