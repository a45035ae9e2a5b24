#include "tests/apps/look/measures.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace vistrel {
namespace {

// IEC 61966-2-1.
double linear(double value) {
  const double v = value / 255;
  return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

// CIE 15.
double rootOf(double t) {
  constexpr double kEdge = 6.0 / 29;
  return t > kEdge * kEdge * kEdge ? std::cbrt(t) : t / (3 * kEdge * kEdge) + 4.0 / 29;
}

Srgb colourAt(const Picture& picture, uint32_t x, uint32_t y) {
  Srgb colour;
  const double scale = picture.bits == 16 ? 257 : 1;
  for (uint32_t c = 0; c < 3; ++c)
    colour[c] = picture.at(x, y, picture.channels < 3 ? 0 : c) / scale;
  return colour;
}

}  // namespace

double Lab::chroma() const { return std::hypot(a, b); }

Lab labOf(const Srgb& colour) {
  const double r = linear(colour[0]), g = linear(colour[1]), b = linear(colour[2]);
  const double x = rootOf((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
  const double y = rootOf(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
  const double z = rootOf((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

Srgb meanOf(const Picture& picture, const vistrel_region& box) {
  if (box.x + box.width > picture.width || box.y + box.height > picture.height)
    throw std::runtime_error("a patch lies outside of the picture");
  Srgb sum{};
  for (uint32_t y = box.y; y < box.y + box.height; ++y)
    for (uint32_t x = box.x; x < box.x + box.width; ++x) {
      const Srgb colour = colourAt(picture, x, y);
      for (size_t c = 0; c < 3; ++c) sum[c] += colour[c];
    }
  for (double& channel : sum) channel /= static_cast<double>(box.width) * box.height;
  return sum;
}

Luma lumaOf(const Picture& picture) {
  std::vector<double> lumas;
  double sum = 0, white = 0;
  for (uint32_t y = 0; y < picture.height; ++y)
    for (uint32_t x = 0; x < picture.width; ++x) {
      const Srgb colour = colourAt(picture, x, y);
      lumas.push_back(0.2126 * colour[0] + 0.7152 * colour[1] + 0.0722 * colour[2]);
      sum += lumas.back();
      white += std::min({colour[0], colour[1], colour[2]}) >= 255;
    }
  const double count = static_cast<double>(lumas.size());
  const auto middle = lumas.begin() + static_cast<ptrdiff_t>(lumas.size() / 2);
  std::nth_element(lumas.begin(), middle, lumas.end());
  return {sum / count, *middle, 100 * white / count};
}

}  // namespace vistrel
