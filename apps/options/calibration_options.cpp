#include "apps/options/calibration_options.h"

#include "apps/options/options.h"

namespace vistrel::app {

std::vector<std::filesystem::path> CalibrationOptions::files() const {
  std::vector<std::filesystem::path> given;
  for (const std::string& file : {dark, flat, hot})
    if (!file.empty()) given.push_back(file);
  return given;
}

void addCalibrationOptions(CLI::App& command, CalibrationOptions& o) {
  const auto addFile = [&command](const char* name, std::string& file, const char* meaning) {
    aFile(command.add_option(name, file, meaning))->type_name("FILE");
  };
  addFile("--dark", o.dark, "Frame without light, subtracted");
  addFile("--flat", o.flat, "Frame of an even light, which is evened out");
  addFile("--hot", o.hot, "Hot pixels to replace: a text of lines `X Y`");
}

}  // namespace vistrel::app
