// Images that are turned or mirrored: made upright first, then stored in their orientation.
#pragma once

#include "host/engine.h"

namespace vistrel::host {

inline bool isTurned(const vistrel_conversion& conversion) {
  return conversion.orientation > VISTREL_UPRIGHT;
}
// Whether the orientation exchanges width and height.
inline bool swapsSides(const vistrel_conversion& conversion) {
  return conversion.orientation >= VISTREL_TRANSPOSED;
}

// The conversion that makes the upright image: pixels before they are converted to the format.
vistrel_conversion uprightConversion(const Plan& plan, const vistrel_conversion& conversion);

// Stores rows of the image and makes them visible to all threads. upright: the pixels of the
// upright image, without padding. With an arena that counts, it only takes memory.
void storeTurned(const EngineCall& call, const unsigned char* upright, ImageRows rows,
                 core::Arena& arena);

}  // namespace vistrel::host
