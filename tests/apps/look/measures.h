// What can be measured in a developed picture.
#pragma once

#include <array>

#include "tests/apps/patches.h"
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

Srgb meanOf(const Picture& picture, const vistrel_region& box);

// Of luma by BT.709's weights, from 0 to 255.
struct Luma {
  double mean, median;
  double percentWhite;  // pixels at 255 in all channels
};
Luma lumaOf(const Picture& picture);

}  // namespace vistrel
