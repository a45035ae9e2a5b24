// The look of astronomical frames: a dark sky, faint nebulae, few bright points.
#pragma once

#include "apps/look/frame_statistics.h"

namespace vistrel::app {

// Whether the samples of all places form a narrow, dark peak of noise, or one with few samples far
// above it. Neighbours differ as much in noise as any two samples do, unlike in other dark scenes.
bool isSky(const vistrel_frame& frame, const std::array<Histogram, 4>& places,
           const vistrel_region& region);

// Sets all parts of the look that aren't known, from its white and matrix.
void decideSky(const vistrel_frame& frame, const std::array<Histogram, 4>& places,
               const KnownLook& known, const vistrel_region& region, Look& look);

}  // namespace vistrel::app
