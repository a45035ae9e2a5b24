#include "bench/levels.h"

namespace vistrel::core::bench {

std::vector<Level> usualLevels() {
#if VISTREL_X86
  if (widestLevel() == Level::avx512) return {Level::avx2, Level::avx512};
#endif
  return {widestLevel()};
}

}  // namespace vistrel::core::bench
