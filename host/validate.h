// Checks of the arguments, each by itself or against one other.
#pragma once

#include "host/tables.h"

namespace vistrel::host {

// Throws Refusal for anything that neither region, samples nor memory come into.
void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion);

}  // namespace vistrel::host
