// vistrel compare: the same crop through every algorithm, side by side.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addCompareCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
