// Colour patches in pictures.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace vistrel {

struct Patch {
  std::string name;
  vistrel_region box;
  std::array<double, 3> colour{};  // red, green, blue of the display; black if not given

  bool isNeutral() const { return colour[0] == colour[1] && colour[1] == colour[2]; }
};

// Lines such as "white 16x16+100+80", or with the colour: "white 16x16+100+80 0.9 0.9 0.9"; '#'
// begins a comment. Throws std::runtime_error.
std::vector<Patch> readPatches(const std::filesystem::path& path);

}  // namespace vistrel
