// The dispatch levels by name.
#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "common/level.h"

namespace vistrel::check {

constexpr std::array<std::string_view, kLevels> kLevelNames = {"base", "ssse3", "sse41", "avx2",
                                                               "avx512"};

inline std::string_view name(Level level) { return kLevelNames[static_cast<size_t>(level)]; }

inline std::optional<Level> levelNamed(std::string_view text) {
  const auto found = std::find(kLevelNames.begin(), kLevelNames.end(), text);
  if (found == kLevelNames.end()) return std::nullopt;
  return static_cast<Level>(found - kLevelNames.begin());
}

inline std::vector<Level> levelsOfProcessor() {
#if defined(__x86_64__) || defined(__i386__)
  const int widest = static_cast<int>(widestLevel());
#else
  const int widest = 0;
#endif
  std::vector<Level> levels;
  for (int l = 0; l <= widest; ++l) levels.push_back(static_cast<Level>(l));
  return levels;
}

// The base level has two indices, 0 before any start-up call and 1 after it.
inline void setLevel(Level level, bool started = true) {
  g_topLevel = level;
  switch (level) {
    case Level::base: ippJumpIndexForMergedLibs = started ? 1 : 0; break;
    case Level::ssse3: ippJumpIndexForMergedLibs = 2; break;
    default: ippJumpIndexForMergedLibs = 3; break;
  }
}

}  // namespace vistrel::check
