// The levels of the vector loops, for tests and benchmarks.
#include "cpu/level.h"
#include "host/status.h"
#include "vistrel/processor.h"

namespace vistrel::host {
namespace {

// Chooses the widest level as this library is loaded.
[[maybe_unused]] const int32_t g_started = ippStaticInit();

void setLevel(size_t level) {
  if (level > static_cast<size_t>(core::widestLevel())) {
    std::string names;
    for (size_t i = 0; const char* name = vistrel_level_name(i); ++i)
      names += textOf("{}{} ({})", i ? ", " : "", name, i);
    reject(VISTREL_BAD_LEVEL, "level", level, "this machine has {}", names);
  }
  core::setLevel(static_cast<core::Level>(level));
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel;
using namespace vistrel::host;

const char* vistrel_level_name(size_t level) {
  return level <= static_cast<size_t>(core::widestLevel()) ? core::kLevelNames[level].data()
                                                           : nullptr;
}

size_t vistrel_level() { return static_cast<size_t>(core::currentLevel()); }

int32_t vistrel_set_level(size_t level, vistrel_error* error) {
  return toStatus(error, [&] { setLevel(level); });
}
