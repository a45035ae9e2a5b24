// For code that levels above base alone have.
#pragma once

#include <array>
#include <vector>

#include "tests/levels.h"

// VISTREL_BY_LEVEL without the base level.
#if VISTREL_X86
#define OF_LEVEL(name)                         \
  (std::array{                                 \
      &ssse3::name, &sse41::name, &avx2::name, \
      &avx512::name}[static_cast<size_t>(currentLevel()) - static_cast<size_t>(Level::ssse3)])
#elif defined(__aarch64__)
#define OF_LEVEL(name) (&neon::name)
#endif

namespace vistrel::core::test {

inline std::vector<Level> levelsAboveBase() {
  std::vector<Level> levels = supportedLevels();
  levels.erase(levels.begin());
  return levels;
}

}  // namespace vistrel::core::test
