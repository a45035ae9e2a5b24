// A picture to draw on: boxes, discs, text, magnified pixels.
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

  // Drawing is clipped to the canvas.
  void box(int left, int top, int width, int height, Paint paint);
  void disc(double x, double y, double radius, Paint paint);  // antialiased

  // A line of text. Each dot of the font becomes `scale` x `scale`
  // pixels.
  void text(int left, int top, int scale, std::string_view line, Paint paint);
  static int textWidth(int scale, std::string_view line);
  static int textHeight(int scale);

  // Part of an RGB24 or MONO8 image, with each pixel magnified to `zoom` x `zoom`.
  void magnified(int left, int top, uint32_t zoom, const Image& image, const vistrel_region& part);

  const Image& image() const { return image_; }

 private:
  uint8_t* pixel(int x, int y);  // red, green, blue; null outside the canvas
  void put(int x, int y, Paint paint, double share = 1);

  Image image_;
};

}  // namespace vistrel::app
