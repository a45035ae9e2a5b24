// Chooses the levels to time.
#pragma once

#include <vector>

#include "cpu/level.h"

namespace vistrel::core::bench {

// AVX2, for which the goals are stated, and AVX-512; otherwise the widest supported level.
std::vector<Level> usualLevels();

}  // namespace vistrel::core::bench
