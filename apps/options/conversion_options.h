// What the command line says about a result: depth, tone, binning, gray.
#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/options/algorithm.h"
#include "apps/options/preparation_options.h"
#include "apps/options/wording.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// --window, --curve.
struct ToneOptions {
  std::optional<uint32_t> window;
  std::string curve;            // a number or a file; empty without one
  std::vector<uint16_t> table;  // of the file

  // The curve's file, if it is one. Throws Failure (usage) for a number that is no curve.
  std::optional<std::filesystem::path> file() const;

  void apply(vistrel_conversion& conversion) const;  // which keeps a pointer to `table`
  std::string typed() const;                         // "--curve 2"; empty without either
  Wording words() const;
};

struct ConversionOptions {
  std::optional<Algorithm> algorithm;  // bilinear
  uint32_t binning = 1;
  std::optional<vistrel_region> region;
  PreparationOptions preparation;
  ToneOptions tone;
  std::string depth, format, gray;  // empty: 8, that of the depth, luma
  bool mask = false;
  bool bare = false;  // samples in the order of the format, not in that of a picture

  // Options that do not go together, and those that have no effect on the frame: sentences for the
  // user.
  std::vector<std::string> contradictions() const;
  std::vector<std::string> idleFor(const vistrel_frame& frame) const;

  Wording words() const;

  // Throws Failure (rejected) for more bits than the algorithm is made for.
  vistrel_conversion of(const vistrel_frame& frame) const;  // refers to these options

  bool keepsAllBits() const;
};

void addToneOptions(CLI::App& command, ToneOptions& options);
void addConversionOptions(CLI::App& command, ConversionOptions& options);

}  // namespace vistrel::app
