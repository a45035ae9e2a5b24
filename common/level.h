// Which body of a vectorised loop runs. The published index names the level that
// was chosen at start-up; its highest value takes the widest body that processor
// and operating system have.
#pragma once

#include <array>
#include <cstdint>

extern "C" {
extern uint32_t ippJumpIndexForMergedLibs;
}

namespace vistrel {

enum class Level { base, ssse3, sse41, avx2, avx512 };
constexpr int kLevels = 5;

inline Level widestLevel() {
#if defined(__x86_64__) || defined(__i386__)
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq") &&
      __builtin_cpu_supports("avx512vbmi"))
    return Level::avx512;
  if (__builtin_cpu_supports("avx2")) return Level::avx2;
  return Level::sse41;
#else
  return Level::base;
#endif
}

// The body of the index's highest value: the lesser of the two. Tests lower the first to reach
// every body; the second follows the enabled features.
inline Level g_topLevel = widestLevel();
inline Level g_enabledLevel = Level::avx512;

inline Level levelOfIndex(uint32_t jumpIndex) {
#if defined(__x86_64__) || defined(__i386__)
  switch (jumpIndex) {
    case 3: return g_topLevel < g_enabledLevel ? g_topLevel : g_enabledLevel;
    case 2: return Level::ssse3;
    default: return Level::base;
  }
#else
  static_cast<void>(jumpIndex);
  return Level::base;
#endif
}

inline Level currentLevel() { return levelOfIndex(ippJumpIndexForMergedLibs); }

// VISTREL_AT_LEVEL(level, name): vistrel::LEVEL::name, for a name that a body compiled by
// each_level.inl defines. VISTREL_BY_LEVEL(name): that of the current level.
#if defined(__x86_64__) || defined(__i386__)
#define VISTREL_AT_LEVEL(level, name)                                                   \
  (std::array{&::vistrel::base::name, &::vistrel::ssse3::name, &::vistrel::sse41::name, \
              &::vistrel::avx2::name, &::vistrel::avx512::name}[static_cast<int>(level)])
#else
#define VISTREL_AT_LEVEL(level, name) (static_cast<void>(level), &::vistrel::base::name)
#endif
#define VISTREL_BY_LEVEL(name) VISTREL_AT_LEVEL(::vistrel::currentLevel(), name)

}  // namespace vistrel
