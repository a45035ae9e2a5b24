// A conversion as the library will do it: region, phase, amounts.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

struct Plan {
  const Format* format;
  const Format* made;            // what the library makes: colours where luma is wanted
  uint32_t x, y, width, height;  // what the whole bins cover, in sensor pixels
  uint32_t phase;                // of the pixel at x, y; not read for mono frames
  uint32_t bits;                 // significant ones of a sample that the library gets
  uint32_t nDstBits;             // all channels together, without alpha
  uint64_t sourceStride;         // bytes
  bool readsBeside;              // the algorithm looks at what lies beside the region
  vistrel_layout layout;
};

// Checks all but samples and memory. Throws Refusal.
Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion);

// Checks the memory of frame and image. Returns the image's stride in bytes.
size_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image);

}  // namespace vistrel::host
