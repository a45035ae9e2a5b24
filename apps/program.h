// The whole command line: every command with every option.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds all commands to `program`. The one that is given sets `status`, its exit status.
void describeProgram(CLI::App& program, int& status);

}  // namespace vistrel::app
