#include "host/bands.h"

#include "host/status.h"

namespace vistrel::host {
namespace {

// A band of this many pixels takes some 20 microseconds.
constexpr uint64_t kMinPixels = 75'000;
constexpr uint64_t kBandsAThread = 4;

// Each thread gets equally many, if there are enough.
uint64_t bandsFor(uint64_t pixels, uint64_t threads) {
  if (threads == 1) return 1;
  const uint64_t most = std::clamp<uint64_t>(pixels / kMinPixels, 1, kBandsAThread * threads);
  return most < threads ? most : most / threads * threads;
}

}  // namespace

Bands::Bands(ImageRows rows, uint64_t pixels, uint32_t threads) : rows_(rows), threads_(threads) {
  const uint64_t height = rows.end - origin();
  const uint64_t count = bandsFor(height * pixels, threads);
  height_ = (static_cast<uint32_t>((height + count - 1) / count) + 1) & ~1u;
}

ThreadSource::ThreadSource(const vistrel_conversion& c) : conversion_(c) {
  if (c.threads < 2 || c.run) return;
  team_.emplace(c.team);
  if (c.threads > (*team_)->threads())
    reject(VISTREL_BAD_THREADS, "conversion.threads", c.threads, "its team has {} threads",
           (*team_)->threads());
}

void ThreadSource::run(uint32_t members, Task task, void* data) const {
  if (team_) return (*team_)->run(members, task, data);
  const int32_t result = conversion_.run(conversion_.run_context, members, task, data);
  if (result)
    reject(VISTREL_RUN_FAILED, "conversion.run", "", "it returned {} instead of 0", result);
}

void ThreadSource::checkDone(bool isDone) {
  if (!isDone)
    reject(VISTREL_RUN_FAILED, "conversion.run", "", "it returned before all tasks were done");
}

}  // namespace vistrel::host
