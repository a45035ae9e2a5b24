// --look, and what the library's arguments are called there.
#pragma once

#include <CLI/CLI.hpp>

#include <nlohmann/json.hpp>
#include <optional>

#include "apps/look/look.h"
#include "apps/options/option_names.h"

namespace vistrel::app {

// All parts, as --json shows them.
nlohmann::ordered_json jsonOf(const Look& look, bool isMono);

// What --look sets of the library's arguments.
OptionNames lookOptionNames();

// --look.
void addLookOption(CLI::App& command, LookChoice& choice);
// The same if there may be none.
void addLookOption(CLI::App& command, std::optional<LookChoice>& choice);

}  // namespace vistrel::app
