// What happens to the mosaic before demosaicing, and to its borders.
#pragma once

#include <CLI/CLI.hpp>

#include <array>
#include <optional>
#include <string>

#include "apps/options/option_names.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// --black, --wb, --edges.
struct PreparationOptions {
  uint32_t black = 0;
  std::string balance;  // as typed
  bool grayWorld = false;
  std::optional<std::array<uint32_t, 3>> gains;  // red, green, blue in 1/4096
  std::string edges = "native";

  void apply(vistrel_conversion& conversion) const;
  OptionNames optionNames() const;
};

void addPreparationOptions(CLI::App& command, PreparationOptions& options);

}  // namespace vistrel::app
