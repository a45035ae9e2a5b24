// The levels to time, and the library steered to one of them.
#pragma once

#include <vector>

#include "cpu/level.h"

namespace vistrel::core::bench {

// AVX2, for which the goals are stated, and what is above it; else the widest level there is.
std::vector<Level> usualLevels();

// From here on our vectorised loops run at this level. The peers choose their own.
void setLevel(Level level);

}  // namespace vistrel::core::bench
