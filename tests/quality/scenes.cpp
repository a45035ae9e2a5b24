#include "tests/quality/scenes.h"

#include <memory>
#include <numbers>

#include "apps/tools/scene/camera.h"
#include "apps/tools/scene/exposure.h"

namespace vistrel::quality {
namespace {

using app::Rgb;
using app::Spot;

constexpr int kProbesPerPixel = 4;  // in each direction

Rgb linear(Rgb display) {
  return {app::linearOf(std::clamp(display.r, 0.0, 1.0)),
          app::linearOf(std::clamp(display.g, 0.0, 1.0)),
          app::linearOf(std::clamp(display.b, 0.0, 1.0))};
}

// Numbers from 0 to 1, the same for a seed.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  double next() {
    state_ = state_ * 6364136223846793005 + 1442695040888963407;
    return static_cast<double>(state_ >> 33) / 2147483648.0;
  }

 private:
  uint64_t state_;
};

// A lens as soft as the pixels are large: light spreads over a square of a pixel's size, and pixels
// take the mean of their area. So probes weigh less the further they lie from a pixel's centre.
constexpr int kReach = 2 * kProbesPerPixel;

constexpr std::array<double, kReach> kWeights = [] {
  std::array<double, kReach> weights{};
  for (int i = 0; i < kReach; ++i)
    weights[static_cast<size_t>(i)] =
        std::min(i + 0.5, kReach - i - 0.5) / (kProbesPerPixel * kProbesPerPixel);
  return weights;
}();

class Probes {
 public:
  template <class LightAt>
  explicit Probes(const LightAt& lightAt) {
    light_.reserve(size_t{kSide} * kSide);
    for (int j = 0; j < kSide; ++j)
      for (int i = 0; i < kSide; ++i) light_.push_back(lightAt(placeOf(i), placeOf(j)));
  }

  Rgb atPixel(int x, int y) const {
    Rgb sum{0, 0, 0};
    for (int j = 0; j < kReach; ++j)
      for (int i = 0; i < kReach; ++i)
        sum = sum + at(x * kProbesPerPixel + i, y * kProbesPerPixel + j) *
                        (kWeights[static_cast<size_t>(i)] * kWeights[static_cast<size_t>(j)]);
    return sum;
  }

 private:
  static constexpr int kSide = (kSceneSize + 1) * kProbesPerPixel;

  static double placeOf(int i) { return (i + 0.5) / kProbesPerPixel - 0.5; }
  Rgb at(int i, int j) const { return light_[static_cast<size_t>(j * kSide + i)]; }

  std::vector<Rgb> light_;
};

template <class LightAt>
Planes render(const LightAt& lightAt) {
  const Probes probes(lightAt);
  Planes planes(kSceneSize, kSceneSize);
  for (int y = 0; y < kSceneSize; ++y) {
    for (int x = 0; x < kSceneSize; ++x) {
      const Rgb light = probes.atPixel(x, y);
      planes.at(0, x, y) = static_cast<float>(light.r);
      planes.at(1, x, y) = static_cast<float>(light.g);
      planes.at(2, x, y) = static_cast<float>(light.b);
    }
  }
  return planes;
}

Planes chart() {
  const app::Scene scene(kSceneSize, kSceneSize, "");
  return render([&scene](double x, double y) { return linear(scene.at(x, y)); });
}

// 0.5 + 0.5 cos of the rings' phase.
double rings(double x, double y) {
  const double u = x - kSceneSize / 2.0, v = y - kSceneSize / 2.0;
  return 0.5 + 0.5 * std::cos(std::numbers::pi * kRingsPerPixel * (u * u + v * v));
}

Planes ringsOf(const Rgb& dark, const Rgb& bright) {
  return render([&](double x, double y) { return mix(dark, bright, rings(x, y)); });
}

// A sector of 30 degrees for each pair of colours.
Planes colouredRings() {
  return render([](double x, double y) {
    const double angle = std::atan2(y - kSceneSize / 2.0, x - kSceneSize / 2.0);
    const double turn = std::floor((angle / std::numbers::pi + 1) * 6) / 12;
    return mix(linear(app::hue(turn) * 0.9),
               linear(app::mix(app::hue(turn + 0.4), app::gray(1), 0.3)), rings(x, y));
  });
}

// Cells with one straight edge each, at 64 angles. Odd cells are gray, even ones saturated.
Planes edges() {
  constexpr int kCells = 8;
  constexpr double kCell = kSceneSize / kCells;
  return render([](double x, double y) {
    const int column = static_cast<int>(x / kCell), row = static_cast<int>(y / kCell);
    const int cell = row * kCells + column;
    const double angle = std::numbers::pi * cell * 37 / 64;
    const double u = x - (column + 0.5) * kCell, v = y - (row + 0.5) * kCell;
    const bool side = u * std::cos(angle) + v * std::sin(angle) > 0;
    if ((row + column) % 2) return linear(app::gray(side ? 0.9 : 0.25));
    return linear(mix(app::hue(cell * 0.38 + (side ? 0.45 : 0)), app::gray(side ? 1 : 0), 0.15));
  });
}

// Text on coloured paper, small and large.
Planes text() {
  constexpr double kCard = kSceneSize / 2.0;
  return render([](double x, double y) {
    const int column = static_cast<int>(x / kCard), row = static_cast<int>(y / kCard);
    const Spot spot{x - (column + 0.5) * kCard, y - (row + 0.5) * kCard, kCard / 2, kCard / 2};
    const Rgb paper = mix(app::hue((row * 2 + column) / 4.0), app::gray(1), 0.3);
    const Rgb ink = app::letters(spot);
    return linear({ink.r * paper.r, ink.g * paper.g, ink.b * paper.b});
  });
}

// Leaves that lie on each other, large and small.
class Leaves {
 public:
  Leaves() {
    Random random(5);
    for (Leaf& leaf : leaves_) {
      leaf.x = random.next() * kSceneSize, leaf.y = random.next() * kSceneSize;
      leaf.length = 2.5 / (0.04 + random.next());
      leaf.width = leaf.length * (0.2 + 0.4 * random.next());
      const double angle = random.next() * 2 * std::numbers::pi;
      leaf.cos = std::cos(angle), leaf.sin = std::sin(angle);
      leaf.colour = colourOf(random);
      enter(leaf);
    }
  }

  Rgb at(double x, double y) const {
    for (const Leaf* const leafHere : cells_[cellOf(y)][cellOf(x)]) {
      const Leaf& leaf = *leafHere;
      const double dx = x - leaf.x, dy = y - leaf.y;
      const double u = (dx * leaf.cos + dy * leaf.sin) / leaf.length;
      const double v = (dy * leaf.cos - dx * leaf.sin) / leaf.width;
      if (u * u + v * v > 1) continue;
      const double vein = std::abs(v) < 0.12 ? 1.3 : 1;
      return linear(leaf.colour * ((0.8 + 0.2 * v) * vein));
    }
    return linear({0.10, 0.09, 0.07});
  }

 private:
  struct Leaf {
    double x, y, length, width, cos, sin;
    Rgb colour;
  };

  // Green to yellow, seldom a flower.
  static Rgb colourOf(Random& random) {
    const double light = 0.3 + 0.6 * random.next(), kind = random.next();
    if (kind > 0.92) return mix(app::hue(kind * 25), app::gray(1), 0.2) * light;
    return Rgb{0.35 + 0.5 * kind, 0.75, 0.15 + 0.2 * random.next()} * light;
  }

  static constexpr int kCell = 16, kCells = kSceneSize / kCell;  // a cell's side; cells in a row

  static size_t cellOf(double v) {
    return static_cast<size_t>(std::clamp(static_cast<int>(v) / kCell, 0, kCells - 1));
  }

  // Adds the leaf to the cells that it may touch.
  void enter(const Leaf& leaf) {
    for (size_t j = cellOf(leaf.y - leaf.length); j <= cellOf(leaf.y + leaf.length); ++j)
      for (size_t i = cellOf(leaf.x - leaf.length); i <= cellOf(leaf.x + leaf.length); ++i)
        cells_[j][i].push_back(&leaf);
  }

  std::array<Leaf, 6000> leaves_;
  std::array<std::array<std::vector<const Leaf*>, kCells>, kCells> cells_;  // topmost leaves first
};

Planes foliage() {
  const auto leaves = std::make_unique<Leaves>();
  return render([&leaves](double x, double y) { return leaves->at(x, y); });
}

}  // namespace

std::vector<NamedScene> renderScenes() {
  return {{"chart", "the program's test scene", chart()},
          {"rings", "a gray zone plate", ringsOf(app::gray(0.05), app::gray(0.9))},
          {"hues", "zone plates of saturated colours", colouredRings()},
          {"edges", "straight edges at 64 angles", edges()},
          {"text", "text on coloured paper", text()},
          {"foliage", "leaves that lie on each other", foliage()}};
}

std::vector<NamedScene> renderPlates() {
  return {{"white and red", "", ringsOf({1, 0.1, 0.1}, {1, 1, 1})},
          {"brown and beige", "", ringsOf({0.5, 0.3, 0.15}, {0.9, 0.7, 0.5})},
          {"rose and mint", "", ringsOf({1, 0.7, 0.7}, {0.7, 1, 0.8})},
          {"black and red", "", ringsOf({0.02, 0.005, 0.005}, {1, 0.02, 0.02})},
          {"magenta and green", "", ringsOf({1, 0.1, 1}, {0.1, 1, 0.1})},
          {"red and blue", "", ringsOf({1, 0.1, 0.1}, {0.1, 0.1, 1})},
          {"orange and teal", "", ringsOf({1, 0.6, 0.2}, {0.2, 0.6, 0.8})}};
}

Planes withNoise(const Planes& light, double deviation, uint64_t seed) {
  Planes noisy = light;
  for (size_t c = 0; c < 3; ++c)
    for (int y = 0; y < light.height; ++y)
      for (int x = 0; x < light.width; ++x) {
        const double noise =
            app::normalNoise(seed * 3 + c, static_cast<uint32_t>(x), static_cast<uint32_t>(y));
        noisy.at(c, x, y) =
            static_cast<float>(std::clamp(light.at(c, x, y) + deviation * noise, 0.0, 1.0));
      }
  return noisy;
}

}  // namespace vistrel::quality
