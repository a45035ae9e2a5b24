#include "apps/look/neutral.h"

#include <algorithm>
#include <cmath>

#include "apps/look/real.h"

namespace vistrel::app {
namespace {

// Bayesian colour constancy (Brainard and Freeman, JOSA A 14, 1997) on log-chromaticities: gray
// surfaces are the most common ones, so a neutral is likely if many blocks are close to it and if
// cameras have such neutrals.
struct LogChromaticity {
  double warmth;   // log2(red / blue)
  double magenta;  // log2(red blue / green^2)
};

template <class Colour>
LogChromaticity logChromaticityOf(const Colour& colour) {
  const double red = log2Of(colour[0]), green = log2Of(colour[1]), blue = log2Of(colour[2]);
  return {red - blue, red + blue - 2 * green};
}

// Colours of few levels of the samples fall into few chromaticities.
constexpr double kLeastLevels = 8;

// Sensors see daylight with about half of green's signal in red and two thirds in blue, warm light
// with more red than blue. Some cameras balance their frames before they deliver them.
struct Light {
  LogChromaticity mean, deviation;
  double weight;
};
constexpr Light kLights[] = {
    {{-0.5, -1.5}, {0.4, 0.6}, 0.6}, {{0.75, -1.6}, {0.45, 0.45}, 0.1}, {{0, 0}, {0.2, 0.2}, 0.1}};

// How much the blocks count beside the cameras: less than fully, since neighbouring blocks are
// alike.
constexpr double kEvidence = 0.8;

// The logarithm of the probability density, to base 2 and up to a constant.
double likelihoodOf(const LogChromaticity& c) {
  constexpr double kHalfLog2E = 0.72134752;
  double best = -1e9;
  for (const Light& light : kLights) {
    const double u = (c.warmth - light.mean.warmth) / light.deviation.warmth;
    const double v = (c.magenta - light.mean.magenta) / light.deviation.magenta;
    const double peak = light.weight / (light.deviation.warmth * light.deviation.magenta);
    best = std::max(best, log2Of(peak) - kHalfLog2E * (u * u + v * v));
  }
  return best;
}

// The chromaticities of blocks, weighted, on a grid.
class Density {
 public:
  void add(const LogChromaticity& c, double weight) {
    const double x = (c.warmth - kLeft) / kStep, y = (c.magenta - kTop) / kStep;
    if (!(x >= 0 && x < kColumns && y >= 0 && y < kRows)) return;
    at(static_cast<int>(x), static_cast<int>(y)) += weight;
    sum_ += weight;
  }

  bool isEmpty() const { return sum_ == 0; }

  // Three boxes in each direction are close to a Gaussian, of 0.22 in log2.
  void blur() {
    for (int pass = 0; pass < 3; ++pass) {
      for (int y = 0; y < kRows; ++y) blurLine(&at(0, y), kColumns, 1);
      for (int x = 0; x < kColumns; ++x) blurLine(&at(x, 0), kRows, kColumns);
    }
  }

  LogChromaticity mostLikely() const {
    LogChromaticity best{};
    double highest = -1e9;
    for (int y = 0; y < kRows; ++y)
      for (int x = 0; x < kColumns; ++x) {
        const LogChromaticity c{kLeft + (x + 0.5) * kStep, kTop + (y + 0.5) * kStep};
        const double density = cells_[static_cast<size_t>(y * kColumns + x)] / sum_;
        const double likelihood = kEvidence * log2Of(density + kFloor) + likelihoodOf(c);
        if (likelihood <= highest) continue;
        highest = likelihood;
        best = c;
      }
    return best;
  }

 private:
  static constexpr double kStep = 0.03, kLeft = -2.4, kTop = -3.9;
  static constexpr int kColumns = 160, kRows = 180, kRadius = 7;
  static constexpr double kFloor = 6e-6;  // of blocks whose colour is chance

  double& at(int x, int y) { return cells_[static_cast<size_t>(y * kColumns + x)]; }

  static void blurLine(double* line, int count, int stride) {
    std::array<double, kRows> sums{};
    for (int i = 0; i < count; ++i)
      for (int j = std::max(0, i - kRadius); j <= std::min(count - 1, i + kRadius); ++j)
        sums[static_cast<size_t>(i)] += line[j * stride];
    for (int i = 0; i < count; ++i)
      line[i * stride] = sums[static_cast<size_t>(i)] / (2 * kRadius + 1);
  }

  std::vector<double> cells_ = std::vector<double>(size_t{kColumns} * kRows);
  double sum_ = 0;
};

// What 99 % of the blocks do not exceed in green.
float brightGreen(std::span<const Block> blocks) {
  std::vector<float> greens;
  for (const Block& block : blocks)
    if (!block.clipped) greens.push_back(block.colour[1]);
  if (greens.empty()) return 0;
  const auto place = greens.begin() + static_cast<ptrdiff_t>(greens.size() * 99 / 100);
  std::nth_element(greens.begin(), place, greens.end());
  return *place;
}

}  // namespace

Gains gainsOfNeutral(const std::array<double, 3>& neutral) {
  const double largest = std::max({neutral[0], neutral[1], neutral[2]});
  Gains gains;
  for (size_t i = 0; i < 3; ++i)
    gains[i] = static_cast<uint32_t>(kLookOne * std::min(largest / neutral[i], 16.0) + 0.5);
  return gains;
}

Gains gainsOf(std::span<const Block> blocks, double level) {
  const double bright = brightGreen(blocks);
  const double least = kLeastLevels * level;
  Density density;
  std::array<double, 3> sum{};
  for (const Block& block : blocks) {
    if (block.clipped) continue;
    const auto [red, green, blue] = block.colour;
    for (size_t i = 0; i < 3; ++i) sum[i] += std::max(block.colour[i], 0.0f);
    if (red > least && green > std::max(least, 0.02 * bright) && blue > least)
      density.add(logChromaticityOf(block.colour), std::min(green / bright, 1.0));
  }
  // Few levels make few chromaticities, but a right mean.
  if (density.isEmpty() && sum[0] > 0 && sum[1] > 0 && sum[2] > 0)
    density.add(logChromaticityOf(sum), 1);
  if (density.isEmpty()) return {kLookOne, kLookOne, kLookOne};
  density.blur();
  const LogChromaticity c = density.mostLikely();
  return gainsOfNeutral(
      {exp2Of((c.magenta + c.warmth) / 2), 1, exp2Of((c.magenta - c.warmth) / 2)});
}

Gains gainsOf(std::span<const Block> blocks, const BlackLevels& black, uint32_t white) {
  return gainsOf(blocks, 1.0 / (white > black[0] ? white - black[0] : 1));
}

}  // namespace vistrel::app
