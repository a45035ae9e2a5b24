// vistrel formats: what others call phases and pixel formats.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addFormatsCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
