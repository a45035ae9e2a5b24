// Files that say what is known about each pixel of a sensor.
#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace vistrel::app {

struct CalibrationOptions {
  std::string dark, flat, hot;  // empty: none

  // Those that are given.
  std::vector<std::filesystem::path> files() const;
};

// --dark, --flat, --hot.
void addCalibrationOptions(CLI::App& command, CalibrationOptions& options);

}  // namespace vistrel::app
