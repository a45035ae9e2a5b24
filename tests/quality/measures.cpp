#include "tests/quality/measures.h"

#include <algorithm>
#include <cmath>

#include "apps/tools/scene/camera.h"

namespace vistrel::quality {
namespace {

constexpr int kBorder = app::kBorder;
constexpr double kVisible = 2.3;  // a distance in CIELAB

double distance(const Lab& p, const Lab& q) { return std::hypot(p.l - q.l, p.a - q.a, p.b - q.b); }

template <class Visit>
void forEachInside(int width, int height, const Visit& visit) {
  for (int y = kBorder; y < height - kBorder; ++y)
    for (int x = kBorder; x < width - kBorder; ++x) visit(x, y);
}

double cpsnrOf(const Planes& truth, const Planes& picture) {
  double sum = 0;
  for (size_t c = 0; c < 3; ++c)
    forEachInside(truth.width, truth.height, [&](int x, int y) {
      const double error = double{truth.at(c, x, y)} - picture.at(c, x, y);
      sum += error * error;
    });
  const double samples = 3.0 * (truth.width - 2 * kBorder) * (truth.height - 2 * kBorder);
  return 10 * std::log10(samples / sum);
}

bool isZipper(const LabPlane& truth, const LabPlane& picture, int x, int y) {
  double least = 1e9;
  int nearestX = 0, nearestY = 0;
  for (int j = y - 1; j <= y + 1; ++j) {
    for (int i = x - 1; i <= x + 1; ++i) {
      if (i == x && j == y) continue;
      const double apart = distance(truth.at(x, y), truth.at(i, j));
      if (apart < least) least = apart, nearestX = i, nearestY = j;
    }
  }
  return std::abs(distance(picture.at(x, y), picture.at(nearestX, nearestY)) - least) > kVisible;
}

}  // namespace

Lab labOf(double red, double green, double blue) {
  const auto root = [](double t) {
    return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
  };
  const double x = root((0.4124564 * red + 0.3575761 * green + 0.1804375 * blue) / 0.9504700);
  const double y = root(0.2126729 * red + 0.7151522 * green + 0.0721750 * blue);
  const double z = root((0.0193339 * red + 0.1191920 * green + 0.9503041 * blue) / 1.0888300);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

LabPlane::LabPlane(const Planes& planes, Light light) : width(planes.width), height(planes.height) {
  const auto linear = [light](float v) {
    return light == Light::kLinear ? v : app::linearOf(std::max(v, 0.0f));
  };
  for (size_t i = 0; i < planes.channels[0].size(); ++i)
    colours.push_back(labOf(linear(planes.channels[0][i]), linear(planes.channels[1][i]),
                            linear(planes.channels[2][i])));
}

Truth::Truth(const Planes& planes, Light light)
    : planes_(planes), light_(light), colours_(planes, light),
      evaluator_(displayed(planes, light)) {}

Measures Truth::of(const Planes& picture) const {
  const LabPlane colours(picture, light_);
  double distances = 0, zippers = 0, worst = 0;
  forEachInside(planes_.width, planes_.height, [&](int x, int y) {
    const double apart = distance(colours_.at(x, y), colours.at(x, y));
    distances += apart;
    worst = std::max(worst, apart);
    zippers += isZipper(colours_, colours, x, y);
  });
  const double pixels = (planes_.width - 2.0 * kBorder) * (planes_.height - 2 * kBorder);
  return {cpsnrOf(planes_, picture), evaluator_.of(displayed(picture, light_)).ssim,
          distances / pixels, 100 * zippers / pixels, worst};
}

Chroma chromaWithin(const Planes& picture, double radius, Light light) {
  const LabPlane colours(picture, light);
  double sum = 0, pixels = 0, largest = 0;
  forEachInside(picture.width, picture.height, [&](int x, int y) {
    if (std::hypot(x + 0.5 - picture.width / 2.0, y + 0.5 - picture.height / 2.0) > radius) return;
    const double chroma = std::hypot(colours.at(x, y).a, colours.at(x, y).b);
    sum += chroma;
    largest = std::max(largest, chroma);
    ++pixels;
  });
  return {sum / pixels, largest};
}

Image displayed(const Planes& picture, Light light) {
  const auto display = [light](double v) {
    if (light == Light::kLinear)
      v = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
    return static_cast<uint8_t>(std::clamp(v, 0.0, 1.0) * 255 + 0.5);
  };
  const auto width = static_cast<uint32_t>(picture.width),
             height = static_cast<uint32_t>(picture.height);
  Image image;
  image.layout = {width, height, 3, 8, width * 3, size_t{width} * height * 3, 0, 0, {}};
  for (size_t i = 0; i < picture.channels[0].size(); ++i)
    for (const size_t c : {2, 1, 0}) image.pixels.push_back(display(picture.channels[c][i]));
  return image;
}

}  // namespace vistrel::quality
