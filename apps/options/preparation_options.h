// What happens to the mosaic before demosaicing, and to its borders.
#pragma once

#include <CLI/CLI.hpp>

#include <array>
#include <optional>
#include <string>

#include "apps/options/option_names.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// --black, --white, --wb, --edges.
struct PreparationOptions {
  std::optional<std::array<uint32_t, 4>> black;  // of the 2x2 block's places, row by row
  uint32_t white = 0;                            // 0: full scale
  std::string balance;                           // as typed
  bool grayWorld = false;
  std::optional<vistrel_region> balanceRegion;   // where gray-world gains are measured
  std::optional<std::array<uint32_t, 3>> gains;  // red, green, blue in 1/4096
  std::string edges;                             // empty: native

  void apply(vistrel_conversion& conversion) const;
  OptionNames optionNames() const;
};

void addPreparationOptions(CLI::App& command, PreparationOptions& options);

}  // namespace vistrel::app
