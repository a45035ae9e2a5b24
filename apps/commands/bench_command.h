// vistrel bench: how fast every algorithm is on this machine.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addBenchCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
