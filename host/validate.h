// Checks arguments: each by itself, or against one other.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

// The significant bits of a sample after the truncation that the conversion specifies.
uint32_t workingBits(const vistrel_frame& frame, const vistrel_conversion& conversion);

// These throw Rejection: for an invalid description of a frame, for an unknown choice, for black
// levels beyond the frame's samples.
void checkFrame(const vistrel_frame& frame);
void checkExcess(const vistrel_conversion& conversion);
void checkBlack(const vistrel_frame& frame, const vistrel_conversion& conversion);
void checkWhite(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Throws Rejection, for that reason, if the image is turned or mirrored.
void checkUpright(const vistrel_conversion& conversion, const char* reason);

// Throws Rejection for everything that does not depend on region, samples or memory.
void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion);

}  // namespace vistrel::host
