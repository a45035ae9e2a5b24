// vistrel convert: raw frames to pictures.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addConvertCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
