// The look of astronomical frames: a dark sky, faint nebulae, few bright points.
#pragma once

#include "apps/look/frame_statistics.h"

namespace vistrel::app {

// Whether the samples of all places form a narrow, dark peak: that of noise, or with few samples
// far above it.
bool isSky(const std::array<Histogram, 4>& places);

// Sets all parts of the look that aren't known, from its white and matrix.
void decideSky(const vistrel_frame& frame, const std::array<Histogram, 4>& places,
               const KnownLook& known, const vistrel_region& region, Look& look);

}  // namespace vistrel::app
