// For code that x86 has from SSSE3 on.
#pragma once

#include <array>
#include <vector>

#include "tests/levels.h"

#if VISTREL_X86

// VISTREL_BY_LEVEL without the base level.
#define OF_LEVEL(name)                         \
  (std::array{                                 \
      &ssse3::name, &sse41::name, &avx2::name, \
      &avx512::name}[static_cast<size_t>(currentLevel()) - static_cast<size_t>(Level::ssse3)])

namespace vistrel::core::test {

inline std::vector<Level> levelsFromSsse3() {
  std::vector<Level> levels = supportedLevels();
  levels.erase(levels.begin());
  return levels;
}

}  // namespace vistrel::core::test

#endif
