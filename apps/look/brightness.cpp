#include "apps/look/brightness.h"

#include <algorithm>
#include <cmath>

namespace vistrel::app {
namespace {

constexpr double kLuminance[] = {0.2126, 0.7152, 0.0722};

using Colour = std::array<double, 3>;

Colour applied(const ColourMatrix& matrix, const Colour& c) {
  Colour result{};
  for (size_t i = 0; i < 9; ++i) result[i / 3] += matrix[i] * c[i % 3] / kLookOne;
  return result;
}

}  // namespace

Brightness::Brightness(std::span<const Block> blocks, const Look& look) {
  const auto [least, largest] = std::minmax_element(look.gains.begin(), look.gains.end());
  const double neutral = static_cast<double>(*least) / *largest;
  amplification_ = static_cast<double>(*largest) / kLookOne;
  neutralClip_ = neutral * amplification_;
  for (const Block& block : blocks) {
    Colour c;
    for (size_t i = 0; i < 3; ++i) c[i] = double{block.colour[i]} * look.gains[i] / *largest;
    if (block.clipped && look.neutralHighlights) c.fill(neutral);
    c = applied(look.matrix, c);
    double luminance = 0;
    for (size_t i = 0; i < 3; ++i) {
      weights_[levelOf(c[i])] += kLuminance[i];
      luminance += kLuminance[i] * c[i];
    }
    ++luminance_[levelOf(luminance)];
    if (block.clipped)
      ++clipped_;
    else
      ++highest_[levelOf(std::max({c[0], c[1], c[2]}))];
  }
  const double all = static_cast<double>(std::max<size_t>(blocks.size(), 1));
  for (double& weight : weights_) weight /= all;
  clipped_ /= all;
}

uint32_t Brightness::levelOf(double x) {
  return static_cast<uint32_t>(std::sqrt(std::clamp(x, 0.0, 1.0)) * (kLevels - 1) + 0.5);
}

double Brightness::lightOf(uint32_t level) {
  const double root = level / (kLevels - 1.0);
  return root * root;
}

double Brightness::mean(double exposure, const CurveSketch& curve) const {
  double sum = 0;
  for (uint32_t level = 0; level < kLevels; ++level) {
    if (weights_[level] == 0) continue;
    sum += weights_[level] * curve.at(exposure * amplification_ * lightOf(level));
  }
  return sum;
}

double Brightness::highlight(double part) const {
  return amplification_ * lightOf(quantile(highest_, part));
}

double Brightness::median() const { return amplification_ * lightOf(quantile(luminance_, 0.5)); }

}  // namespace vistrel::app
