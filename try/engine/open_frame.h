// An open frame, and how it becomes a picture.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/commands/develop_options.h"
#include "apps/input/frame_file.h"
#include "apps/look/finished_look.h"

namespace vistrel::page {

using Json = nlohmann::ordered_json;
using Words = std::vector<std::string>;  // of a command line

// What pixels are made for.
enum class Purpose {
  kDisplay,  // red, green, blue, alpha, or gray: 8 bits
  kPicture,  // red, green, blue, or gray: as many bits as the options say
  kBytes     // the program's format of raw files
};

class OpenFrame {
 public:
  // With the program's options of input. Throws ProgramError.
  OpenFrame(const std::filesystem::path& path, const Words& words);

  Json describe() const;

  // With the options of the program's command: develop or convert. Returns what was decided.
  Json prepare(const std::string& command, const Words& words);

  // Rows of the picture, or all of it if rows can't be made alone. Valid until the next call.
  const Image& convert(Purpose purpose, uint32_t first, uint32_t rows);

  // The samples around a pixel of the picture, and its colours.
  Json probe(uint32_t x, uint32_t y);
  // The gains that make the surroundings of a pixel of the picture gray.
  Json gray(uint32_t x, uint32_t y) const;
  // The samples of each place of the 2x2 block, in 256 classes.
  Json histogram() const;

 private:
  Json prepareDevelop(const Words& words);
  Json prepareConvert(const Words& words);
  // Whether a region of the picture is the same as that part of it.
  bool hasRows() const;

  std::vector<std::string> warnings_;
  app::FrameFile file_;
  const vistrel_frame& frame_;
  app::DevelopOptions develop_;
  app::ConversionOptions convert_;
  std::optional<app::FinishedLook> look_;
  vistrel_conversion conversion_{};
  Image image_;
};

}  // namespace vistrel::page
