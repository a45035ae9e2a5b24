// Options that more than one command has.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "apps/input/input_options.h"

namespace vistrel::app {

// A whole number from `least` to `most`.
CLI::Option* between(CLI::Option* option, int least, int most);

// A whole number from 0.
CLI::Option* fromZero(CLI::Option* option);

// One of `words`.
CLI::Option* oneOf(CLI::Option* option, const std::vector<std::string>& words);

// -s, --bits, --endian, --pixfmt, --align, --skip, --stride, --frame, --from-name.
void addInputOptions(CLI::App& command, InputOptions& options);

// --phase.
CLI::Option* addPhaseOption(CLI::App& command, std::optional<uint32_t>& phase);

}  // namespace vistrel::app
