// Chooses the levels to time and sets the level of the library.
#pragma once

#include <vector>

#include "cpu/level.h"

namespace vistrel::core::bench {

// AVX2, for which the goals are stated, and AVX-512; otherwise the widest supported level.
std::vector<Level> usualLevels();

// Makes our vectorised loops run at this level. The peers choose their own.
void setLevel(Level level);

}  // namespace vistrel::core::bench
