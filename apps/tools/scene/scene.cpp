#include "apps/tools/scene/scene.h"

#include <utility>

#include "apps/tools/drawing/font.h"

namespace vistrel::app {
namespace {

constexpr double kMinCard = 16;  // pixels
constexpr Rgb kTitle{0.95, 0.96, 0.98};

Rgb wedge(const Spot& s) {
  constexpr int kSteps = 16;
  const double u = std::clamp((s.x / s.halfWidth + 1) / 2, 0.0, 0.9999);
  return gray(s.y < 0 ? std::floor(u * kSteps) / (kSteps - 1) : u);
}

Rgb hues(const Spot& s) {
  const double u = (s.x / s.halfWidth + 1) / 2, v = (s.y / s.halfHeight + 1) / 2;
  return mix(gray(0.95), mix(hue(u), gray(0.05), smoothStep(0.5, 1.1, v)),
             smoothStep(-0.1, 0.5, v));
}

}  // namespace

Scene::Scene(uint32_t width, uint32_t height, std::string title)
    : width_(width), height_(height), margin_(std::floor(0.022 * std::min(width_, height_))),
      title_(std::move(title)) {
  const int titleWidth = static_cast<int>(title_.size()) * kGlyphAdvance;
  titleScale_ = static_cast<int>(
      std::min((width_ - 4 * margin_) / titleWidth, 0.04 * height_ / kGlyphHeight));
  const double top = titleScale_ ? titleScale_ * kGlyphHeight + 3 * margin_ : margin_;
  const double strip = std::floor(0.07 * height_);
  const double stripWidth = std::floor((width_ - 3 * margin_) / 2);
  const double stripTop = height_ - margin_ - strip;
  if (strip >= 4 && stripWidth >= kMinCard) {
    boxes_.push_back({margin_, stripTop, stripWidth, strip, wedge});
    boxes_.push_back({2 * margin_ + stripWidth, stripTop, stripWidth, strip, hues});
  }
  placeCards(top, stripTop - margin_);
}

void Scene::placeCards(double top, double bottom) {
  constexpr Rgb (*kCards[])(const Spot&) = {zonePlate,    spheres, patches,
                                            slantedEdges, star,    letters};
  int columns = 1;
  double best = 0;
  for (const int n : {1, 2, 3, 6}) {
    const double side = std::min((width_ - margin_) / n, (bottom - top) * n / 6);
    if (side > best) best = side, columns = n;
  }
  const int rows = 6 / columns;
  const double width = std::floor((width_ - margin_ * (columns + 1)) / columns);
  const double height = std::floor((bottom - top - margin_ * (rows - 1)) / rows);
  if (width < kMinCard || height < kMinCard) return;
  for (int i = 0; i < 6; ++i)
    boxes_.push_back({margin_ + i % columns * (width + margin_),
                      top + i / columns * (height + margin_), width, height, kCards[i]});
}

Spot Scene::Box::spotAt(double x, double y) const {
  return {x - left - width / 2, y - top - height / 2, width / 2, height / 2};
}

bool Scene::Box::contains(double x, double y) const {
  const Spot s = spotAt(x, y);
  const double round = 0.06 * s.radius();
  return std::hypot(std::max(0.0, std::abs(s.x) - s.halfWidth + round),
                    std::max(0.0, std::abs(s.y) - s.halfHeight + round)) <= round;
}

Rgb Scene::ground(double x, double y) const {
  const double u = x / width_, v = y / height_;
  const Rgb upper = mix({0.10, 0.16, 0.30}, {0.13, 0.34, 0.42}, u);
  const Rgb lower = mix({0.46, 0.28, 0.40}, {0.80, 0.52, 0.36}, u);
  return mix(upper, lower, smoothStep(0, 1, v));
}

bool Scene::isTitle(double x, double y) const {
  if (!titleScale_) return false;
  return isInk(title_, static_cast<int>(std::floor((x - 2 * margin_) / titleScale_)),
               static_cast<int>(std::floor((y - 1.5 * margin_) / titleScale_)));
}

Rgb Scene::at(double x, double y) const {
  for (const Box& box : boxes_)
    if (box.contains(x, y)) return box.paint(box.spotAt(x, y));
  return isTitle(x, y) ? kTitle : ground(x, y);
}

}  // namespace vistrel::app
