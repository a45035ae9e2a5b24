// The levels that this processor has.
#pragma once

#include <vector>

#include "cpu/level.h"

namespace vistrel::core::test {

// The base level comes first.
inline std::vector<Level> supportedLevels() {
  std::vector<Level> levels;
  for (int l = 0; l <= static_cast<int>(widestLevel()); ++l)
    levels.push_back(static_cast<Level>(l));
  return levels;
}

}  // namespace vistrel::core::test
