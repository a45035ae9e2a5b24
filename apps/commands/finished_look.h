// A look as the library takes it.
#pragma once

#include <CLI/CLI.hpp>

#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "apps/input/camera_metadata.h"
#include "apps/look/decide.h"
#include "apps/options/option_names.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

class FinishedLook {
 public:
  // Throws Error.
  explicit FinishedLook(const Look& look);
  FinishedLook(const FinishedLook&) = delete;
  FinishedLook& operator=(const FinishedLook&) = delete;

  // The conversion refers to this object.
  void apply(const vistrel_frame& frame, vistrel_conversion& conversion) const;

 private:
  const Look look_;
  const std::vector<uint16_t> transfer_;
  vistrel_finish finish_{}, monoFinish_{};
};

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
