// Instruction-set levels. The level decides which body of a vectorised loop runs. The public jump
// index holds the level chosen at start-up; its highest value stands for the widest body that the
// processor and the operating system support.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "common/arch.h"
#include "vistrel/processor.h"

namespace vistrel::core {

// Their names, and for each the feature that, if enabled, keeps the wider ones from running.
#if VISTREL_X86
enum class Level { base, ssse3, sse41, avx2, avx512 };
constexpr std::array<std::string_view, 5> kLevelNames = {"base", "ssse3", "sse41", "avx2",
                                                         "avx512"};
constexpr std::array<uint64_t, 5> kLevelLimits = {0, 0, IPP_CPU_NO_AVX2, IPP_CPU_NO_AVX512, 0};
#elif defined(__aarch64__)
enum class Level { base, neon };
constexpr std::array<std::string_view, 2> kLevelNames = {"base", "neon"};
constexpr std::array<uint64_t, 2> kLevelLimits = {IPP_CPU_NO_AVX2, 0};
#else
enum class Level { base };
constexpr std::array<std::string_view, 1> kLevelNames = {"base"};
constexpr std::array<uint64_t, 1> kLevelLimits = {0};
#endif
constexpr int kLevels = static_cast<int>(kLevelNames.size());

constexpr std::string_view nameOf(Level level) { return kLevelNames[static_cast<size_t>(level)]; }
constexpr uint64_t limitOf(Level level) { return kLevelLimits[static_cast<size_t>(level)]; }

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
  if (__builtin_cpu_supports("sse4.1")) return Level::sse41;
  return __builtin_cpu_supports("ssse3") ? Level::ssse3 : Level::base;
#else
  return static_cast<Level>(kLevels - 1);
#endif
}

// The highest level that a mask of enabled features allows.
constexpr Level enabledLevel(uint64_t featureMask) {
  int level = 0;
  while (level < kLevels - 1 && !(featureMask & limitOf(static_cast<Level>(level)))) ++level;
  return static_cast<Level>(level);
}

// The level that the highest index runs: the widest one that the processor supports and the enabled
// features allow. Lower indices run no wider one, even if a caller asks for more than there is.
inline Level g_topLevel = widestLevel();

inline Level levelOfIndex([[maybe_unused]] uint32_t jumpIndex) {
#if VISTREL_X86
  if (jumpIndex == 2) return std::min(g_topLevel, Level::ssse3);
  return jumpIndex == 3 ? g_topLevel : Level::base;
#else
  return g_topLevel;
#endif
}

// The lowest index that reaches the level once the processor is detected.
constexpr uint32_t indexOfLevel(Level level) {
  return std::min(static_cast<uint32_t>(level) + 1, 3u);
}

// From now on all vectorised loops run at this level, which the processor must support.
inline void setLevel(Level level) {
  uint64_t features = ippGetEnabledCpuFeatures();
  for (const uint64_t limit : kLevelLimits) features &= ~limit;
  ippSetCpuFeaturesMask(features | limitOf(level));
  ippJumpIndexForMergedLibs = indexOfLevel(level);
}

inline Level currentLevel() { return levelOfIndex(ippJumpIndexForMergedLibs); }

// VISTREL_AT_LEVEL(level, name) is the address of vistrel::core::LEVEL::name, which a body compiled
// for each level defines. VISTREL_BY_LEVEL(name) is the address at the current level.
#define VISTREL_BODY_OF(level, ...) &::vistrel::core::level::__VA_ARGS__
#if VISTREL_X86
#define VISTREL_AT_LEVEL(level, ...)                                                   \
  (std::array{VISTREL_BODY_OF(base, __VA_ARGS__), VISTREL_BODY_OF(ssse3, __VA_ARGS__), \
              VISTREL_BODY_OF(sse41, __VA_ARGS__), VISTREL_BODY_OF(avx2, __VA_ARGS__), \
              VISTREL_BODY_OF(avx512, __VA_ARGS__)}[static_cast<size_t>(level)])
#elif defined(__aarch64__)
#define VISTREL_AT_LEVEL(level, ...)              \
  (std::array{VISTREL_BODY_OF(base, __VA_ARGS__), \
              VISTREL_BODY_OF(neon, __VA_ARGS__)}[static_cast<size_t>(level)])
#else
#define VISTREL_AT_LEVEL(level, ...) \
  (std::array{VISTREL_BODY_OF(base, __VA_ARGS__)}[static_cast<size_t>(level)])
#endif
#define VISTREL_BY_LEVEL(...) VISTREL_AT_LEVEL(::vistrel::core::currentLevel(), __VA_ARGS__)

}  // namespace vistrel::core
