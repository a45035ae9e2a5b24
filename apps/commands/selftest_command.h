// vistrel selftest: whether this machine gives the pixels that are laid down.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addSelftestCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
