// Instruction-set levels: they decide which body of a vectorised loop runs. The public jump index
// holds the level chosen at start-up; its highest value stands for the widest body that processor
// and operating system support.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "common/arch.h"
#include "vistrel/processor.h"

namespace vistrel::core {

#if VISTREL_X86
enum class Level { base, ssse3, sse41, avx2, avx512 };
constexpr std::array<std::string_view, 5> kLevelNames = {"base", "ssse3", "sse41", "avx2",
                                                         "avx512"};
#elif defined(__aarch64__)
enum class Level { base, neon };
constexpr std::array<std::string_view, 2> kLevelNames = {"base", "neon"};
#else
enum class Level { base };
constexpr std::array<std::string_view, 1> kLevelNames = {"base"};
#endif
constexpr int kLevels = static_cast<int>(kLevelNames.size());

constexpr std::string_view nameOf(Level level) { return kLevelNames[static_cast<size_t>(level)]; }

constexpr std::optional<Level> levelNamed(std::string_view name) {
  const auto found = std::find(kLevelNames.begin(), kLevelNames.end(), name);
  if (found == kLevelNames.end()) return std::nullopt;
  return static_cast<Level>(found - kLevelNames.begin());
}

// The widest level that processor and operating system support.
inline Level widestLevel() {
#if VISTREL_X86
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq") &&
      __builtin_cpu_supports("avx512vbmi"))
    return Level::avx512;
  if (__builtin_cpu_supports("avx2")) return Level::avx2;
  return Level::sse41;
#else
  return static_cast<Level>(kLevels - 1);
#endif
}

// From the base level to the widest one.
inline std::vector<Level> supportedLevels() {
  std::vector<Level> levels;
  for (int l = 0; l <= static_cast<int>(widestLevel()); ++l)
    levels.push_back(static_cast<Level>(l));
  return levels;
}

// The highest level that a mask of enabled features allows.
constexpr Level enabledLevel([[maybe_unused]] uint64_t featureMask) {
#if VISTREL_X86
  if (featureMask & IPP_CPU_NO_AVX2) return Level::sse41;
  if (featureMask & IPP_CPU_NO_AVX512) return Level::avx2;
#endif
  return static_cast<Level>(kLevels - 1);
}

// The highest index runs the lower of these two levels. Tests lower the first one to reach every
// body; the second one follows the enabled features.
inline Level g_topLevel = widestLevel();
inline Level g_enabledLevel = enabledLevel(0);

inline Level levelOfIndex([[maybe_unused]] uint32_t jumpIndex) {
  const Level top = std::min(g_topLevel, g_enabledLevel);
#if VISTREL_X86
  if (jumpIndex == 2) return Level::ssse3;
  return jumpIndex == 3 ? top : Level::base;
#else
  return top;
#endif
}

// The lowest index that reaches the level; 0 for the base level, as before start-up.
constexpr uint32_t indexOfLevel(Level level) {
  if (level == Level::base) return 0;
  return static_cast<int>(level) == 1 ? 2 : 3;
}

// For tests and benchmarks: all vectorised loops run at this level.
inline void setLevel(Level level) {
  g_topLevel = level;
  ippJumpIndexForMergedLibs = indexOfLevel(level);
}

inline Level currentLevel() { return levelOfIndex(ippJumpIndexForMergedLibs); }

// VISTREL_AT_LEVEL(level, name): the address of vistrel::core::LEVEL::name; a body that is compiled
// for each level defines the name. VISTREL_BY_LEVEL(name): that of the current level.
#define VISTREL_BODY_OF(level, name) &::vistrel::core::level::name
#if VISTREL_X86
#define VISTREL_AT_LEVEL(level, name)                                    \
  (std::array{VISTREL_BODY_OF(base, name), VISTREL_BODY_OF(ssse3, name), \
              VISTREL_BODY_OF(sse41, name), VISTREL_BODY_OF(avx2, name), \
              VISTREL_BODY_OF(avx512, name)}[static_cast<size_t>(level)])
#elif defined(__aarch64__)
#define VISTREL_AT_LEVEL(level, name) \
  (std::array{VISTREL_BODY_OF(base, name), VISTREL_BODY_OF(neon, name)}[static_cast<size_t>(level)])
#else
#define VISTREL_AT_LEVEL(level, name) (static_cast<void>(level), VISTREL_BODY_OF(base, name))
#endif
#define VISTREL_BY_LEVEL(name) VISTREL_AT_LEVEL(::vistrel::core::currentLevel(), name)

}  // namespace vistrel::core
