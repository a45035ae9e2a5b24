// vistrel cfa: what every convention calls the phase of a crop or a mirrored frame.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addCfaCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
