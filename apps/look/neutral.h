// White balance from the colours of a frame.
#pragma once

#include <span>

#include "apps/look/frame_statistics.h"

namespace vistrel::app {

// The gains that make gray surfaces gray, the smallest 1; all 1 if no block tells a colour. Samples
// are multiples of `level` from black.
Gains gainsOf(std::span<const Block> blocks, double level);

// The same of blocks from these levels of black to this one of white.
Gains gainsOf(std::span<const Block> blocks, const BlackLevels& black, uint32_t white);

// The gains that make this colour neutral, the smallest 1 and none above 16.
Gains gainsOfNeutral(const std::array<double, 3>& neutral);

}  // namespace vistrel::app
