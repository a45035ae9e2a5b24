// The six cards of the scene. Each is a function of the position on the card.
#pragma once

#include "apps/tools/scene/colour.h"

namespace vistrel::app {

// A position on a card, in pixels from its centre, and half the card's size.
struct Spot {
  double x, y;
  double halfWidth, halfHeight;

  double radius() const { return std::min(halfWidth, halfHeight); }
};

Rgb zonePlate(const Spot& s);     // rings, finer outward, up to 0.4 cycles per pixel
Rgb slantedEdges(const Spot& s);  // squares rotated by six degrees
Rgb star(const Spot& s);          // a wheel of 36 spokes
Rgb patches(const Spot& s);       // 6 x 4 plain colours
Rgb spheres(const Spot& s);       // soft shading and highlights
Rgb letters(const Spot& s);       // text of decreasing size

}  // namespace vistrel::app
