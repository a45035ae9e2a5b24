// A look as users, files and the library describe it.
#pragma once

#include <CLI/CLI.hpp>

#include <nlohmann/json.hpp>
#include <optional>

#include "apps/input/camera_metadata.h"
#include "apps/look/decide.h"
#include "apps/look/finished_look.h"
#include "apps/options/option_names.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// A look that users choose in part, with what the file says about its camera: users go first.
LookChoice withCamera(LookChoice choice, const CameraMetadata& camera, bool isMono);

// Throws ProgramError if the black level that users give is not below the white level that was
// decided or that the file specifies.
void checkBlack(const KnownLook& given, const Look& look, const vistrel_frame& frame);

// All parts, as --json shows them.
nlohmann::ordered_json jsonOf(const Look& look, bool isMono);

// What --look sets of the library's arguments.
OptionNames lookOptionNames();

// --look.
void addLookOption(CLI::App& command, LookChoice& choice);
// The same if there may be none.
void addLookOption(CLI::App& command, std::optional<LookChoice>& choice);

}  // namespace vistrel::app
