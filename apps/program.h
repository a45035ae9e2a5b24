// The whole command line: every command with all its options.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds all commands to `program`. The one that the user gives sets `status` to its exit status.
void describeProgram(CLI::App& program, int& status);

}  // namespace vistrel::app
