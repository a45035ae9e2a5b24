// A picture to draw on: boxes, letters, magnified pixels. The order of a colour is red, green,
// blue.
#pragma once

#include <string_view>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

struct Paint {
  uint8_t red, green, blue;
};

class Canvas {
 public:
  Canvas(uint32_t width, uint32_t height, Paint ground);

  // What leaves the canvas is cut off.
  void box(int left, int top, int width, int height, Paint paint);
  void disc(double x, double y, double radius, Paint paint);  // with soft edges

  // A line of text in the scene's font; lower case becomes upper. A dot of a letter is `scale`
  // pixels wide and high.
  void text(int left, int top, int scale, std::string_view line, Paint paint);
  static int textWidth(int scale, std::string_view line);
  static int textHeight(int scale);

  // The part of a BGR24 or MONO8 image, each pixel `zoom` wide and high.
  void magnified(int left, int top, uint32_t zoom, const Image& image, const vistrel_region& part);

  const Image& image() const { return image_; }

 private:
  uint8_t* pixel(int x, int y);  // blue, green, red; null outside
  void put(int x, int y, Paint paint, double share = 1);

  Image image_;
};

}  // namespace vistrel::app
