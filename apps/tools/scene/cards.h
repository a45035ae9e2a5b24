// The six pictures of the scene. Each is a function of the place on a card.
#pragma once

#include "apps/tools/scene/colour.h"

namespace vistrel::app {

// A place on a card, counted in pixels from its middle, and half the card's size.
struct Spot {
  double x, y;
  double halfWidth, halfHeight;

  double radius() const { return std::min(halfWidth, halfHeight); }
};

Rgb zonePlate(const Spot& s);     // rings that get finer outward, to 0.4 cycles a pixel
Rgb slantedEdges(const Spot& s);  // squares turned by six degrees
Rgb star(const Spot& s);          // a wheel of 36 spokes
Rgb patches(const Spot& s);       // 6 x 4 plain colours
Rgb spheres(const Spot& s);       // soft shades and highlights
Rgb letters(const Spot& s);       // text of falling size

}  // namespace vistrel::app
