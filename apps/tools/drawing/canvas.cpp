#include "apps/tools/drawing/canvas.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "apps/tools/drawing/font.h"

namespace vistrel::app {

Canvas::Canvas(uint32_t width, uint32_t height, Paint ground) {
  image_.layout = {width, height, 3, 8, size_t{width} * 3, size_t{width} * 3 * height, 0, 0, {}};
  image_.pixels.assign(image_.layout.bytes, 0);
  box(0, 0, static_cast<int>(width), static_cast<int>(height), ground);
}

uint8_t* Canvas::pixel(int x, int y) {
  const vistrel_layout& l = image_.layout;
  if (x < 0 || y < 0 || uint32_t(x) >= l.width || uint32_t(y) >= l.height) return nullptr;
  return &image_.pixels[size_t(y) * l.row_bytes + size_t(x) * 3];
}

void Canvas::put(int x, int y, Paint paint, double share) {
  uint8_t* p = pixel(x, y);
  if (!p) return;
  const uint8_t rgb[] = {paint.red, paint.green, paint.blue};
  for (int c = 0; c < 3; ++c)
    p[c] = static_cast<uint8_t>(std::lround(p[c] * (1 - share) + rgb[c] * share));
}

void Canvas::box(int left, int top, int width, int height, Paint paint) {
  for (int y = top; y < top + height; ++y)
    for (int x = left; x < left + width; ++x) put(x, y, paint);
}

void Canvas::disc(double x, double y, double radius, Paint paint) {
  const int reach = static_cast<int>(radius) + 2;
  const int middleX = static_cast<int>(x), middleY = static_cast<int>(y);
  for (int j = middleY - reach; j <= middleY + reach; ++j)
    for (int i = middleX - reach; i <= middleX + reach; ++i)
      put(i, j, paint, std::clamp(radius + 0.5 - std::hypot(i + 0.5 - x, j + 0.5 - y), 0.0, 1.0));
}

void Canvas::text(int left, int top, int scale, std::string_view line, Paint paint) {
  for (int y = 0; y < textHeight(scale); ++y)
    for (int x = 0; x < textWidth(scale, line); ++x)
      if (isInk(line, x / scale, y / scale)) put(left + x, top + y, paint);
}

int Canvas::textWidth(int scale, std::string_view line) {
  return std::max(0, static_cast<int>(line.size()) * kGlyphAdvance - 1) * scale;
}

int Canvas::textHeight(int scale) { return kGlyphHeight * scale; }

void Canvas::magnified(int left, int top, uint32_t zoom, const Image& image,
                       const vistrel_region& part) {
  for (uint32_t y = 0; y < part.height * zoom; ++y) {
    const uint8_t* row = &image.pixels[(part.y + y / zoom) * image.layout.row_bytes];
    for (uint32_t x = 0; x < part.width * zoom; ++x) {
      const uint8_t* p = row + size_t{part.x + x / zoom} * image.layout.channels;
      const Paint paint = image.layout.channels == 1 ? Paint{*p, *p, *p} : Paint{p[0], p[1], p[2]};
      put(left + static_cast<int>(x), top + static_cast<int>(y), paint);
    }
  }
}

}  // namespace vistrel::app
