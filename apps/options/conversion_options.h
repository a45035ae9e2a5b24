// What the command line says about a result: depth, tone, binning, gray.
#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/options/algorithm.h"
#include "apps/options/preparation_options.h"
#include "host/vistrel.hpp"

namespace vistrel::app {

// --window, --curve.
struct ToneOptions {
  std::optional<uint32_t> window;
  std::string curve;            // a number or a file; empty without one
  std::vector<uint16_t> table;  // of the file

  std::optional<std::filesystem::path> file() const;  // of the curve

  // Reads the file, if there is one. Throws Failure.
  void load();
  void apply(vistrel_conversion& conversion) const;  // which keeps a pointer to `table`
};

struct ConversionOptions {
  Algorithm algorithm = algorithmAt(0);
  uint32_t binning = 1;
  std::optional<vistrel_region> region;
  PreparationOptions preparation;
  ToneOptions tone;
  std::string depth = "8", format, gray = "luma";
  bool mask = false;

  // Throws Failure for what does not go together, also with a picture of that name, and for a
  // curve that cannot be read.
  void load(const std::filesystem::path& output);

  // Throws Failure (rejected) for more bits than the algorithm is made for.
  vistrel_conversion of(const vistrel_frame& frame) const;  // refers to these options
};

void addToneOptions(CLI::App& command, ToneOptions& options);
void addConversionOptions(CLI::App& command, ConversionOptions& options);

}  // namespace vistrel::app
