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

bool isClipped(const Mosaic& mosaic, int x, int y, int white) {
  constexpr int kReach = 2;
  for (int v = std::max(y - kReach, 0); v <= std::min(y + kReach, int(mosaic.height) - 1); ++v)
    for (int u = std::max(x - kReach, 0); u <= std::min(x + kReach, int(mosaic.width) - 1); ++u)
      if (mosaic.at(u, v) >= white) return true;
  return false;
}

constexpr uint32_t kTile = 8;

// The means of red, green and blue of the tile at (x, y).
Srgb tileAt(const Mosaic& mosaic, const std::string& phase, uint32_t x, uint32_t y) {
  Srgb sum{};
  for (uint32_t v = 0; v < kTile; ++v)
    for (uint32_t u = 0; u < kTile; ++u)
      sum[std::string("rgb").find(phase[v % 2 * 2 + u % 2])] += mosaic.at(int(x + u), int(y + v));
  constexpr double kSites = kTile * kTile / 4.0;
  return {sum[0] / kSites, sum[1] / (2 * kSites), sum[2] / kSites};
}

bool hasClipped(const Mosaic& mosaic, uint32_t x, uint32_t y, int white) {
  for (uint32_t v = 0; v < kTile; v += 2)
    for (uint32_t u = 0; u < kTile; u += 2)
      if (isClipped(mosaic, int(x + u), int(y + v), white)) return true;
  return false;
}

double medianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// What the colours of most tiles are, and how far they scatter: median, and median deviation.
std::array<Srgb, 2> skyOf(const std::vector<Srgb>& tiles) {
  std::array<Srgb, 2> sky{};
  for (size_t c = 0; c < 3; ++c) {
    std::vector<double> values;
    for (const Srgb& tile : tiles) values.push_back(tile[c]);
    sky[0][c] = medianOf(values);
    for (double& value : values) value = std::abs(value - sky[0][c]);
    sky[1][c] = medianOf(values);
  }
  return sky;
}

StarColours compared(const std::vector<double>& raw, const std::vector<double>& shown) {
  const double n = static_cast<double>(raw.size());
  double x = 0, y = 0, xx = 0, yy = 0, xy = 0;
  for (size_t i = 0; i < raw.size(); ++i) x += raw[i] / n, y += shown[i] / n;
  for (size_t i = 0; i < raw.size(); ++i) {
    xx += (raw[i] - x) * (raw[i] - x) / n;
    yy += (shown[i] - y) * (shown[i] - y) / n;
    xy += (raw[i] - x) * (shown[i] - y) / n;
  }
  return {raw.size(), xx * yy > 0 ? xy / std::sqrt(xx * yy) : 0, std::sqrt(yy)};
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

double percentBurnt(const Picture& picture, const Mosaic& mosaic, int white) {
  double burnt = 0;
  for (uint32_t y = 0; y < picture.height; ++y)
    for (uint32_t x = 0; x < picture.width; ++x)
      burnt += std::ranges::min(colourAt(picture, x, y)) >= 255 &&
               !isClipped(mosaic, int(x), int(y), white);
  return 100 * burnt / picture.width / picture.height;
}

StarColours starColoursOf(const Picture& picture, const Mosaic& mosaic, const std::string& phase,
                          int white) {
  constexpr double kFar = 10;  // median deviations above the sky
  const uint32_t columns = mosaic.width / kTile, rows = mosaic.height / kTile;
  std::vector<Srgb> tiles;
  for (uint32_t i = 0; i < columns * rows; ++i)
    tiles.push_back(tileAt(mosaic, phase, i % columns * kTile, i / columns * kTile));
  const auto [sky, scatter] = skyOf(tiles);
  std::vector<double> raw, shown;
  for (uint32_t i = 0; i < columns * rows; ++i) {
    const uint32_t x = i % columns * kTile, y = i / columns * kTile;
    const Srgb& tile = tiles[i];
    bool isStar = !hasClipped(mosaic, x, y, white);
    for (size_t c = 0; c < 3; ++c) isStar &= tile[c] > sky[c] + kFar * (scatter[c] + 0.1);
    if (!isStar) continue;
    raw.push_back(std::log2((tile[0] - sky[0]) / (tile[2] - sky[2])));
    const Srgb colour = meanOf(picture, {x, y, kTile, kTile});
    shown.push_back((colour[0] - colour[2]) / (colour[0] + colour[1] + colour[2]));
  }
  return compared(raw, shown);
}

}  // namespace vistrel
