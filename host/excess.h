// Checks what a conversion reads of a frame for samples with excess bits.
#pragma once

#include "host/bands.h"

namespace vistrel::host {

// Columns left .. right - 1 of rows top .. bottom - 1.
struct FramePart {
  uint32_t left, right, top, bottom;
  uint32_t channels;  // samples of a pixel

  size_t samples() const { return size_t{right - left} * channels; }  // of a row
};

// The part of the frame that rows of the image are made from.
FramePart partOf(const Plan& plan, const vistrel_frame& frame, const vistrel_conversion& conversion,
                 ImageRows rows);

// Throws Rejection for the first sample in the part's columns of row y that has excess bits.
void checkExcessSamples(const vistrel_frame& frame, const FramePart& part, const void* row,
                        uint32_t y);

// The same for the whole part.
void checkExcessSamples(const vistrel_frame& frame, const FramePart& part, uint32_t threads,
                        const ThreadSource& threadSource);

}  // namespace vistrel::host
