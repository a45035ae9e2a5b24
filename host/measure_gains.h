// Gray-world gains.
#pragma once

#include "host/preparation.h"

namespace vistrel::host {

// The gray-world gains of a region of a frame that has passed all checks. Throws Rejection for
// excess bits.
Gains measureGains(const vistrel_frame& frame, const vistrel_conversion& conversion,
                   const vistrel_region& region);

}  // namespace vistrel::host
