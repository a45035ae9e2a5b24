// Checks of the arguments, each on its own or against one other.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

// The significant bits of a sample after the truncation that the conversion asks for.
uint32_t workingBits(const vistrel_frame& frame, const vistrel_conversion& conversion);

// These throw Rejection: for a bad description of a frame, for an unknown choice, for black levels
// that the frame's samples cannot have.
void checkFrame(const vistrel_frame& frame);
void checkExcess(const vistrel_conversion& conversion);
void checkBlack(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Throws Rejection for everything that does not depend on region, samples or memory.
void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion);

}  // namespace vistrel::host
