// The levels of the library's vector loops, for tests and benchmarks.
#include <algorithm>

#include "cpu/level.h"
#include "host/status.h"
#include "host/streams.h"
#include "vistrel/processor.h"

namespace vistrel::host {
namespace {

using core::Level;

constexpr uint64_t kLimits = IPP_CPU_NO_AVX2 | IPP_CPU_NO_AVX512;

bool has(Level level) {
  switch (level) {
    case Level::base: return true;
    case Level::ssse3: return ipp_is_mni_extension();
    case Level::sse41: return ipp_is_sse41_extension();
    default: return level <= core::widestLevel();
  }
}

uint64_t limitOf(Level level) {
  return level == Level::sse41 ? IPP_CPU_NO_AVX2 : level == Level::avx2 ? IPP_CPU_NO_AVX512 : 0;
}

void setLevel(size_t level) {
  if (level >= core::kLevels || !has(static_cast<Level>(level))) {
    std::string names;
    for (size_t i = 0; const char* name = vistrel_level_name(i); ++i)
      names += fmt::format("{}{} ({})", i ? ", " : "", name, i);
    reject(VISTREL_BAD_LEVEL, "level", level, "this machine has {}", names);
  }
  loadLibrary();  // which chooses a level
  ippJumpIndexForMergedLibs = level == 0 ? 1 : level == 1 ? 2 : 3;
  ippSetCpuFeaturesMask((ippGetEnabledCpuFeatures() & ~kLimits) |
                        limitOf(static_cast<Level>(level)));
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel;
using namespace vistrel::host;

const char* vistrel_level_name(size_t level) {
  return level < core::kLevels && has(static_cast<Level>(level)) ? core::kLevelNames[level].data()
                                                                 : nullptr;
}

size_t vistrel_level() {
  if (toStatus(nullptr, [] { loadLibrary(); })) return 0;  // as the library before it is loaded
  const uint32_t index = ippJumpIndexForMergedLibs;
  if (index != 3) return index == 2 ? 1 : 0;
  const Level enabled = core::enabledLevel(ippGetEnabledCpuFeatures());
  return static_cast<size_t>(std::min(core::widestLevel(), enabled));
}

int32_t vistrel_set_level(size_t level, vistrel_error* error) {
  return toStatus(error, [&] { setLevel(level); });
}
