#include "bench/levels.h"

#include <strings.h>

namespace vistrel::bench {

namespace {

#if defined(__x86_64__) || defined(__i386__)
constexpr const char* kBase = "SSE2";
#else
constexpr const char* kBase = "base";
#endif
constexpr const char* kNames[kLevels] = {kBase, "SSSE3", "SSE4.1", "AVX2", "AVX-512"};

}  // namespace

const char* nameOf(Level level) { return kNames[static_cast<int>(level)]; }

std::optional<Level> levelNamed(const std::string& name) {
  for (int i = 0; i < kLevels; ++i)
    if (strcasecmp(name.c_str(), kNames[i]) == 0) return static_cast<Level>(i);
  return std::nullopt;
}

std::vector<Level> usualLevels() {
  switch (widestLevel()) {
    case Level::avx512: return {Level::avx2, Level::avx512};
    default: return {widestLevel()};
  }
}

void setLevel(Level level) {
  ippJumpIndexForMergedLibs = level == Level::base ? 0 : level == Level::ssse3 ? 2 : 3;
  g_topLevel = level;
}

}  // namespace vistrel::bench
