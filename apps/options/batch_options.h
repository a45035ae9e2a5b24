// What the command line says about many frames at once.
#pragma once

#include <CLI/CLI.hpp>

#include "apps/batch/batch.h"

namespace vistrel::app {

// -j, --keep-going, --overwrite, --dry-run, --manifest, --progress, --json.
void addBatchOptions(CLI::App& command, BatchOptions& options);

// The options of these groups as they were given, for comparison with those of another run.
std::string givenOptions(const CLI::App& command, const std::vector<std::string>& groups);

}  // namespace vistrel::app
