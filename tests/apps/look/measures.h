// What can be measured in a developed picture.
#pragma once

#include <array>

#include "tests/apps/patches.h"
#include "tests/apps/pictures.h"
#include "tests/real_frames.h"
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

// The percentage of pixels at 255 in all channels although no sample within two pixels has reached
// `white`, where the sensor clips.
double percentBurnt(const Picture& picture, const Mosaic& mosaic, int white);

// Of tiles of 8x8 pixels that are far above the sky in all colours and not clipped. Colours are
// compared by red against blue: the logarithm of their ratio above the sky in the mosaic, their
// difference in parts of all three in the picture.
struct StarColours {
  size_t tiles;
  double correlation;  // of mosaic and picture
  double deviation;    // in the picture
};
StarColours starColoursOf(const Picture& picture, const Mosaic& mosaic, const std::string& phase,
                          int white);

}  // namespace vistrel
