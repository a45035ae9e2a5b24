// vistrel guess: what a dump without a header may be.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addGuessCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
