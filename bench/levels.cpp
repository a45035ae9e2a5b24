#include "bench/levels.h"

namespace vistrel::core::bench {

std::vector<Level> usualLevels() {
#if VISTREL_X86
  if (widestLevel() == Level::avx512) return {Level::avx2, Level::avx512};
#endif
  return {widestLevel()};
}

void setLevel(Level level) {
  ippJumpIndexForMergedLibs = indexOfLevel(level);
  g_topLevel = level;
}

}  // namespace vistrel::core::bench
