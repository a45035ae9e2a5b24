// Options of a conversion: algorithm, depth, tone, binning, gray.
#pragma once

#include <CLI/CLI.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/options/algorithm.h"
#include "apps/options/calibration_options.h"
#include "apps/options/option_names.h"
#include "apps/options/output_format.h"
#include "apps/options/preparation_options.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// --window, --curve.
struct ToneOptions {
  std::optional<uint32_t> window;
  std::string curve;            // a name, a number or a file; empty for none
  std::vector<uint16_t> table;  // read from the file

  // The file of the curve, if it is no name or number of one. Throws ProgramError (usage) for
  // other numbers.
  std::optional<std::filesystem::path> file() const;

  void apply(vistrel_conversion& conversion) const;  // keeps a pointer to `table`
  std::string typed() const;                         // "--curve 2"; empty if neither is given
  OptionNames optionNames() const;
};

struct ConversionOptions {
  std::optional<AlgorithmChoice> algorithm;  // bilinear
  uint32_t binning = 1;
  bool means = false;                   // of bins
  std::optional<uint32_t> orientation;  // TIFF's code
  CalibrationOptions calibration;
  std::optional<vistrel_region> region;
  PreparationOptions preparation;
  ToneOptions tone;
  std::string depth, format, gray;  // empty: 8, the depth's format, luma
  bool mask = false;
  OutputKind output = OutputKind::picture;

  // Messages for the user: options that conflict, and options that have no effect on the frame.
  std::vector<std::string> conflicts() const;
  std::vector<std::string> unusedOptions(const vistrel_frame& frame) const;

  OptionNames optionNames() const;

  // The result refers to these options.
  vistrel_conversion of(const vistrel_frame& frame) const;

  // --format, or the format that --depth and the output imply.
  const OutputFormat& outputFormat() const;
};

void addToneOptions(CLI::App& command, ToneOptions& options);
void addConversionOptions(CLI::App& command, ConversionOptions& options);

// The options that convert and develop share. usual: the algorithm without -a.
void addAlgorithmOption(CLI::App& command, ConversionOptions& options, const char* usual);
void addRegionOption(CLI::App& command, ConversionOptions& options);
CLI::Option* addFormatOptions(CLI::App& command, ConversionOptions& options,
                              const std::vector<std::string>& depths, const char* depthMeaning);

}  // namespace vistrel::app
