// How a picture is turned and mirrored, as users write it.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vistrel::app {

// "90"; the names are those of the table in the help of --orient.
const char* orientationName(uint32_t code);

// The code of a name, or of TIFF's number 1 to 8. Throws ProgramError (usage) that names `option`;
// `more` is what else it allows, such as "auto, ".
uint32_t parseOrientation(std::string_view option, std::string_view text,
                          std::string_view more = "");

// --orient. `automatic` allows the word auto, which leaves `orientation` empty.
void addOrientOption(CLI::App& command, std::optional<uint32_t>& orientation, bool automatic);

}  // namespace vistrel::app
