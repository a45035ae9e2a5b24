// vistrel report: how near every algorithm comes to true pictures, and how fast.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addReportCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
