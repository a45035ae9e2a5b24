// What the command line says about many frames at once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace CLI {
class App;
}

namespace vistrel::app {

// Each worker holds a stream of its own for as long as the batch runs.
constexpr unsigned kMaxWorkers = VISTREL_MAX_STREAMS;

// What standard error shows while a batch runs.
enum class ProgressMode {
  kAuto,    // a bar on a terminal, if there is more than one frame
  kAlways,  // a bar
  kNever,
  kJson  // one object per line
};

// The part of an array of runs that this one does: number `index` of `count`, from 1.
struct Shard {
  uint32_t index = 1, count = 1;
};

struct BatchOptions {
  unsigned workers = 1;  // 0: one per processor
  bool keepGoing = false, dryRun = false, overwrite = false, json = false;
  bool quiet = false, recursive = false;
  Shard shard;
  std::string manifest;  // a file; empty for none
  ProgressMode progress = ProgressMode::kAuto;
};

// -j, --recursive, --keep-going, --overwrite, --dry-run, --shard, --manifest, --progress, --quiet,
// --json.
void addBatchOptions(CLI::App& command, BatchOptions& options);

// The options of these groups as the user gave them, without those of the names to leave out.
std::string givenOptions(const CLI::App& command, const std::vector<std::string>& groups,
                         const std::vector<std::string>& leftOut = {});

}  // namespace vistrel::app
