// vistrel unpack: a packed dump as plain samples.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addUnpackCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
