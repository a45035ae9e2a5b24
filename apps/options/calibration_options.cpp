#include "apps/options/calibration_options.h"

namespace vistrel::app {

std::vector<std::filesystem::path> CalibrationOptions::files() const {
  std::vector<std::filesystem::path> given;
  for (const std::string& file : {dark, flat, hot})
    if (!file.empty()) given.push_back(file);
  return given;
}

void addCalibrationOptions(CLI::App& command, CalibrationOptions& o) {
  command.add_option("--dark", o.dark, "Frame without light, subtracted")->type_name("FILE");
  command.add_option("--flat", o.flat, "Frame of an even light, which is evened out")
      ->type_name("FILE");
  command.add_option("--hot", o.hot, "Hot pixels to replace: a text of lines `X Y`")
      ->type_name("FILE");
}

}  // namespace vistrel::app
