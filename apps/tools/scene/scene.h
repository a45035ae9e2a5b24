// The test scene: six cards on a soft background, a title, a gray wedge and a band of hues.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "apps/tools/scene/cards.h"

namespace vistrel::app {

// Adapts its layout to any size; leaves out parts that would be too small to see.
class Scene {
 public:
  Scene(uint32_t width, uint32_t height, std::string title);

  // The colour at a position, in pixels from the top left corner.
  Rgb at(double x, double y) const;

 private:
  struct Box {
    double left, top, width, height;
    Rgb (*paint)(const Spot&);

    Spot spotAt(double x, double y) const;
    bool contains(double x, double y) const;  // with rounded corners
  };

  void placeCards(double top, double bottom);
  Rgb ground(double x, double y) const;
  bool isTitle(double x, double y) const;

  double width_, height_, margin_;
  int titleScale_ = 0;
  std::string title_;
  std::vector<Box> boxes_;
};

}  // namespace vistrel::app
