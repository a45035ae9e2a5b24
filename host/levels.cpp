// The levels of the library's vectorised loops, for tests and benchmarks.
#include <atomic>

#include "cfa/processor.h"
#include "common/level.h"
#include "host/status.h"
#include "host/streams.h"

namespace vistrel::host {
namespace {

constexpr const char* kNames[kLevels] = {"base", "ssse3", "sse41", "avx2", "avx512"};
constexpr uint64_t kLevelMask = uint64_t{0x6C6576656C} << 24;  // see ippSetCpuFeaturesMask

bool has(Level level) {
  switch (level) {
    case Level::base: return true;
    case Level::ssse3: return ipp_is_mni_extension();
    case Level::sse41: return ipp_is_sse41_extension();
    default: return level <= widestLevel();
  }
}

// The body of index 3, which the library does not tell.
std::atomic<size_t>& topLevel() {
  static std::atomic<size_t> level = static_cast<size_t>(widestLevel());
  return level;
}

void setLevel(size_t level) {
  if (level >= kLevels || !has(static_cast<Level>(level))) {
    std::string names;
    for (size_t i = 0; const char* name = vistrel_level_name(i); ++i)
      names += fmt::format("{}{} ({})", i ? ", " : "", name, i);
    refuse(VISTREL_BAD_LEVEL, "level {}: this machine has {}", level, names);
  }
  loadLibrary();  // which chooses a level
  ippJumpIndexForMergedLibs = level == 0 ? 1 : level == 1 ? 2 : 3;
  if (level < 2) return;
  ippSetCpuFeaturesMask(kLevelMask | level << 16 | (ippGetEnabledCpuFeatures() & 0xFFFF));
  topLevel() = level;
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel;
using namespace vistrel::host;

const char* vistrel_level_name(size_t level) {
  return level < kLevels && has(static_cast<Level>(level)) ? kNames[level] : nullptr;
}

size_t vistrel_get_level() {
  loadLibrary();
  const uint32_t index = ippJumpIndexForMergedLibs;
  return index == 3 ? topLevel().load() : index == 2 ? 1 : 0;
}

int32_t vistrel_set_level(size_t level, vistrel_error* error) {
  return guarded(error, [&] { setLevel(level); });
}
