// Sets the level of the library.
#pragma once

#include "cpu/level.h"

namespace vistrel::core::check {

// The base level has two indices, 0 before any start-up call and 1 after it.
inline void setLevel(Level level, bool started = true) {
  g_topLevel = level;
  ippJumpIndexForMergedLibs = level == Level::base && !started ? 0 : indexOfLevel(level);
}

}  // namespace vistrel::core::check
