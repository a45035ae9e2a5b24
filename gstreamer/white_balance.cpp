#include "gstreamer/white_balance.h"

#include <algorithm>
#include <cmath>

namespace vistrel::gstreamer {
namespace {

constexpr double kMeasuresInTimeConstant = 8;

// A little more than two steps in which gains are found.
constexpr double kNoise = 0.05;

std::array<double, 3> logarithmsOf(const app::Gains& gains) {
  std::array<double, 3> result;
  std::ranges::transform(gains, result.begin(), [](uint32_t gain) { return std::log(gain); });
  return result;
}

}  // namespace

void WhiteBalance::aim(const app::Gains& found) {
  const Logarithms next = logarithmsOf(found);
  const auto isFar = [](double a, double b) { return std::abs(a - b) > kNoise; };
  if (!aim_) now_ = next;
  if (!aim_ || !std::ranges::equal(next, *aim_, std::not_fn(isFar))) aim_ = next;
  sinceMeasured_ = 0;
}

const app::Gains& WhiteBalance::next(BalanceMode mode, double seconds, double timeConstant,
                                     const Measure& measure) {
  sinceMeasured_ += seconds;
  const bool isDue =
      mode == BalanceMode::kContinuous && sinceMeasured_ * kMeasuresInTimeConstant >= timeConstant;
  if (!aim_ || isDue) aim(measure());
  const double part = timeConstant > 0 ? 1 - std::exp(-seconds / timeConstant) : 1;
  for (size_t i = 0; i < 3; ++i) {
    now_[i] += part * ((*aim_)[i] - now_[i]);
    gains_[i] = static_cast<uint32_t>(std::lround(std::exp(now_[i])));
  }
  return gains_;
}

}  // namespace vistrel::gstreamer
