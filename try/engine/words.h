// Options as the program parses them.
#pragma once

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/options/faults.h"

namespace vistrel::page {

// `add` adds the options to the command. Throws ProgramError.
template <class Add>
void parseWords(std::vector<std::string> given, const Add& add) {
  CLI::App parser;
  add(parser);
  std::ranges::reverse(given);  // as CLI11 takes them
  try {
    parser.parse(std::move(given));
  } catch (const CLI::ParseError& error) {
    app::throwError(app::kUsage, "{}", app::faultText(parser, error));
  }
}

}  // namespace vistrel::page
