// What can be measured in a developed picture.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/apps/pictures.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {

// CIELAB under D65.
struct Lab {
  double lightness, a, b;

  double chroma() const;
};

// sRGB, 0 to 255.
using Srgb = std::array<double, 3>;
Lab labOf(const Srgb& colour);

struct Patch {
  std::string name;
  vistrel_region box;
};

// Lines such as "white 16x16+100+80"; '#' begins a comment. Throws std::runtime_error.
std::vector<Patch> readPatches(const std::filesystem::path& path);

Srgb meanOf(const Picture& picture, const vistrel_region& box);

// Of luma by BT.709's weights, from 0 to 255.
struct Luma {
  double mean, median;
  double percentWhite;  // pixels at 255 in all channels
};
Luma lumaOf(const Picture& picture);

}  // namespace vistrel
