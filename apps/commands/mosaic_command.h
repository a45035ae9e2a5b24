// vistrel mosaic: a picture in full colour as a sensor with filters would have seen it.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Adds the command. When it is the one that was given, `status` is its exit status.
void addMosaicCommand(CLI::App& program, int& status);

}  // namespace vistrel::app
