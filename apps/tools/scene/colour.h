// Display colours: 0 is black, 1 is white.
#pragma once

#include <algorithm>
#include <cmath>

namespace vistrel::app {

struct Rgb {
  double r, g, b;
};

constexpr Rgb operator+(Rgb a, Rgb b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }
constexpr Rgb operator*(Rgb a, double k) { return {a.r * k, a.g * k, a.b * k}; }
constexpr Rgb gray(double v) { return {v, v, v}; }

// a at t = 0, b at t = 1.
constexpr Rgb mix(Rgb a, Rgb b, double t) { return a * (1 - t) + b * t; }

// Rises smoothly from 0 at `from` to 1 at `to`.
constexpr double smoothStep(double from, double to, double x) {
  const double t = std::clamp((x - from) / (to - from), 0.0, 1.0);
  return t * t * (3 - 2 * t);
}

// `turn` 0 is red, 1/3 green, 2/3 blue.
inline Rgb hue(double turn) {
  const auto channel = [turn](double offset) {
    const double t = turn + offset;
    return std::clamp(std::abs((t - std::floor(t)) * 6 - 3) - 1, 0.0, 1.0);
  };
  return {channel(0), channel(2.0 / 3), channel(1.0 / 3)};
}

constexpr double luma(Rgb c) { return 0.299 * c.r + 0.587 * c.g + 0.114 * c.b; }

}  // namespace vistrel::app
