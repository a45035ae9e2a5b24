// Checks of the arguments, each by itself or against one other.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

// The significant bits that are left of a sample after the reduction that is asked for.
uint32_t workingBits(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Throw Refusal: for the frame's description, for a choice that there is not, for a black level
// that the frame cannot have.
void checkFrame(const vistrel_frame& frame);
void checkExcess(const vistrel_conversion& conversion);
void checkBlack(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Throws Refusal for anything that neither region, samples nor memory come into.
void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion);

}  // namespace vistrel::host
