#include "apps/tools/scene/cards.h"

#include <numbers>
#include <string_view>

#include "apps/tools/drawing/font.h"

namespace vistrel::app {
namespace {

using std::numbers::pi;

constexpr Rgb kPaper{0.93, 0.92, 0.88};
constexpr Rgb kInk{0.10, 0.11, 0.14};

struct TextLine {
  std::string_view text;
  Rgb ink;
};
constexpr TextLine kLines[] = {
    {"VISTREL", kInk},
    {"LIGHT TO IMAGE", {0.72, 0.12, 0.12}},
    {"SPHINX OF BLACK QUARTZ", {0.10, 0.30, 0.66}},
    {"JUDGE MY VOW 0123456789", {0.08, 0.42, 0.18}},
    {"THE QUICK BROWN FOX JUMPS OVER THE LAZY DOG", kInk},
    {"PACK MY BOX WITH FIVE DOZEN LIQUOR JUGS", kInk},
};

bool inTurnedSquare(const Spot& s, double centreX, double half) {
  constexpr double kTurn = 6 * pi / 180;
  const double x = s.x - centreX, y = s.y;
  return std::max(std::abs(x * std::cos(kTurn) - y * std::sin(kTurn)),
                  std::abs(x * std::sin(kTurn) + y * std::cos(kTurn))) < half;
}

// Shading and highlight of a unit sphere at (x, y) of its disc, lit from the top left.
Rgb lit(Rgb colour, double x, double y) {
  const double z = std::sqrt(std::max(0.0, 1 - x * x - y * y));
  const double light = std::max(0.0, -0.48 * x - 0.58 * y + 0.66 * z);
  const double shine = std::pow(std::max(0.0, -0.27 * x - 0.32 * y + 0.91 * z), 60);
  return mix(colour * (0.16 + 0.84 * light), gray(1), 0.85 * shine);
}

}  // namespace

Rgb zonePlate(const Spot& s) {
  constexpr double kFinest = 0.4;  // cycles per pixel, at the nearer edge of the card
  const double phase = pi * kFinest * (s.x * s.x + s.y * s.y) / s.radius();
  return mix(kInk, kPaper, 0.5 + 0.5 * std::cos(phase));
}

Rgb slantedEdges(const Spot& s) {
  const double apart = s.halfWidth / 2;
  const double half = 0.6 * std::min(apart, s.halfHeight);
  if (inTurnedSquare(s, -apart, half)) return gray(0.12);
  if (inTurnedSquare(s, apart, half)) return {0.16, 0.32, 0.72};
  return s.x < 0 ? gray(0.86) : Rgb{0.95, 0.66, 0.28};
}

Rgb star(const Spot& s) {
  constexpr int kSpokes = 36;
  const double distance = std::hypot(s.x, s.y) / s.radius();
  if (distance > 0.9 || distance < 0.04) return kPaper;
  return std::sin(std::atan2(s.y, s.x) * kSpokes) > 0 ? kInk : kPaper;
}

Rgb patches(const Spot& s) {
  constexpr int kColumns = 6, kRows = 4;
  constexpr double kGap = 0.06;
  const double u = (s.x / s.halfWidth / 0.94 + 1) / 2 * kColumns;
  const double v = (s.y / s.halfHeight / 0.92 + 1) / 2 * kRows;
  if (u < 0 || v < 0 || u >= kColumns || v >= kRows) return kInk;
  const double inU = u - std::floor(u), inV = v - std::floor(v);
  if (std::min({inU, inV, 1 - inU, 1 - inV}) < kGap) return kInk;
  const int row = static_cast<int>(v), column = static_cast<int>(u);
  if (row == kRows - 1) return gray(0.96 - 0.17 * column);
  const Rgb pure = hue((column + 0.5 * (row == 1)) / kColumns);
  return row == 0 ? mix(gray(0.92), pure, 0.55)
                  : mix(gray(0.42), pure, row == 1 ? 0.62 : 0.5) * (row == 1 ? 1.0 : 0.62);
}

Rgb spheres(const Spot& s) {
  const double r = std::min(s.halfWidth / 3.3, s.halfHeight * 0.62);
  const double v = s.y / s.halfHeight;
  Rgb colour = mix({0.30, 0.36, 0.42}, {0.80, 0.80, 0.76}, smoothStep(-1, 1, v));
  constexpr Rgb kColours[] = {{0.82, 0.20, 0.17}, {0.22, 0.62, 0.27}, {0.17, 0.34, 0.78}};
  for (int i = 0; i < 3; ++i) {
    const double x = (s.x - (i - 1) * 2.15 * r) / r, y = s.y / r;
    const double shadow = std::hypot(x - 0.25, (y - 1.02) * 3.5);
    colour = colour * (1 - 0.45 * (1 - smoothStep(0.3, 1.3, shadow)));
    if (x * x + y * y < 1) colour = lit(kColours[i], x, y);
  }
  return colour;
}

Rgb letters(const Spot& s) {
  const double width = 1.76 * std::min(s.halfWidth, 1.4 * s.halfHeight);
  const auto scaleOf = [width](std::string_view line) {  // 0 if the line is too long for the card
    return static_cast<int>(width / (static_cast<int>(line.size()) * kGlyphAdvance - 1));
  };
  double height = 0;
  for (const TextLine& line : kLines) height += scaleOf(line.text) * kLineAdvance;
  double top = std::floor(-height / 2);
  for (const TextLine& line : kLines) {
    const int scale = scaleOf(line.text);
    if (!scale) continue;
    const double x = std::floor((s.x + width / 2) / scale), y = std::floor((s.y - top) / scale);
    if (isInk(line.text, static_cast<int>(x), static_cast<int>(y))) return line.ink;
    top += scale * kLineAdvance;
  }
  return kPaper;
}

}  // namespace vistrel::app
