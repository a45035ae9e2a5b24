#include "gstreamer/white_balance.h"

#include <algorithm>
#include <cmath>

namespace vistrel::gstreamer {
namespace {

constexpr double kMeasuresInTimeConstant = 8;

// Gains that are so close are as good, a little more than two steps in which they are found.
constexpr double kClose = 0.05;

// By which gains move in a frame, at most, unless the light has changed.
constexpr double kStillStep = 0.004;

Light::Logarithms logarithmsOf(const app::Gains& gains) {
  Light::Logarithms result;
  std::ranges::transform(gains, result.begin(), [](uint32_t gain) { return std::log(gain); });
  return result;
}

}  // namespace

void WhiteBalance::aim(const app::Gains& found) {
  const bool hasChanged = light_.take(logarithmsOf(found));
  if (!aim_) now_ = light_.mean();
  if (!aim_ || hasChanged || largestDifference(light_.mean(), *aim_) > kClose) aim_ = light_.mean();
  follows_ = follows_ || hasChanged;
  sinceMeasured_ = 0;
}

void WhiteBalance::step(double part) {
  const double most = follows_ ? HUGE_VAL : kStillStep;
  for (size_t i = 0; i < 3; ++i) {
    now_[i] += std::clamp(part * ((*aim_)[i] - now_[i]), -most, most);
    gains_[i] = static_cast<uint32_t>(std::lround(std::exp(now_[i])));
  }
  follows_ = follows_ && largestDifference(*aim_, now_) > kClose;
}

const app::Gains& WhiteBalance::next(BalanceMode mode, double seconds, double timeConstant,
                                     const Measure& measure) {
  sinceMeasured_ += seconds;
  const bool isDue = light_.isUnsure() || sinceMeasured_ * kMeasuresInTimeConstant >= timeConstant;
  if (!aim_ || (mode == BalanceMode::kContinuous && isDue)) aim(measure());
  step(timeConstant > 0 ? 1 - std::exp(-seconds / timeConstant) : 1);
  return gains_;
}

}  // namespace vistrel::gstreamer
