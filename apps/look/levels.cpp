#include "apps/look/levels.h"

#include <algorithm>
#include <bit>

namespace vistrel::app {
namespace {

constexpr double kDarkOutliers = 0.0002, kDarkShare = 0.005, kBrightShare = 0.995,
                 kBrightOutliers = 0.0005, kLeastClipped = 0.0001;
constexpr double kSpike = 5, kPile = 3;  // times the counts below

uint32_t highestOf(const Histogram& samples) {
  uint32_t value = static_cast<uint32_t>(samples.size()) - 1;
  while (value && !samples[value]) --value;
  return value;
}

// A histogram of 256 steps of equal width. Steps are compared by their most frequent values, since
// some samples take only every other value or every fourth.
class Steps {
 public:
  Steps(const Histogram& samples, uint32_t fullScale) : width_((fullScale + 1) / 256) {
    for (uint32_t value = 0; value <= fullScale; ++value) {
      const double count = static_cast<double>(samples[value]);
      counts_[value / width_] += count;
      peaks_[value / width_] = std::max(peaks_[value / width_], count);
    }
  }

  // The step with most clipped samples, 0 if there is none. A few samples above it may be hot
  // pixels.
  uint32_t clipped(double all) const {
    double above = 0, most = kLeastClipped * all;
    uint32_t found = 0;
    for (uint32_t step = 255; step > kLowest && above <= kBrightOutliers * all; --step) {
      if (counts_[step] >= most && peaks_[step] >= kSpike * below(step)) {
        most = counts_[step];
        found = step;
      }
      if (step + kReach < 256) above += counts_[step + kReach];
    }
    return found;
  }

  // Whether all of the step's clipped samples have the same value.
  bool isSharp(uint32_t step) const { return 2 * peaks_[step] > counts_[step]; }

  uint32_t lowestOfPile(uint32_t step) const {
    while (step > kLowest && peaks_[step - 1] >= kPile * below(step - 1)) --step;
    return step;
  }

  uint32_t width() const { return width_; }

 private:
  static constexpr uint32_t kReach = 4;    // of a pile's own noise
  static constexpr uint32_t kLowest = 64;  // that can be white

  // The mean peak of the steps below a pile.
  double below(uint32_t step) const {
    double sum = 1;
    for (uint32_t n = kReach; n < 2 * kReach && n <= step; ++n) sum += peaks_[step - n];
    return sum / kReach;
  }

  uint32_t width_;
  std::array<double, 256> counts_{}, peaks_{};
};

// Whether more than half of a place's samples are not below `level`: of a plain surface, if that is
// not near full scale.
auto mostReach(uint32_t level) {
  return
      [level](const Histogram& place) { return countOf(place) && quantile(place, 0.5) >= level; };
}

// The value of the darkest samples. Those below a gap are dead pixels.
uint32_t darkEnd(const Histogram& samples, uint32_t gap) {
  const uint32_t least = quantile(samples, kDarkOutliers);
  uint32_t dark = quantile(samples, kDarkShare);
  for (uint32_t value = dark; value > least && dark - value <= gap;)
    if (samples[--value]) dark = value;
  return dark;
}

}  // namespace

uint32_t fullScaleOf(const Histogram& samples, uint32_t bits) {
  const uint32_t used =
      bits < 16 ? bits : static_cast<uint32_t>(std::bit_width(highestOf(samples)));
  return (1u << std::max(used, 8u)) - 1;
}

uint32_t whiteOf(const std::array<Histogram, 4>& places, uint32_t fullScale) {
  const Histogram samples = sumOf(places);
  const Steps steps(samples, fullScale);
  const uint32_t step = steps.clipped(static_cast<double>(countOf(samples)));
  if (!step) return fullScale;
  const uint32_t lowest = steps.lowestOfPile(step) * steps.width();
  if (lowest < fullScale / 8 * 7 && std::ranges::any_of(places, mostReach(lowest)))
    return fullScale;
  if (!steps.isSharp(step)) return lowest;
  const auto begin = samples.begin() + step * steps.width();
  return static_cast<uint32_t>(std::max_element(begin, begin + steps.width()) - samples.begin());
}

uint32_t blackOf(const std::array<Histogram, 4>& places, uint32_t fullScale) {
  uint32_t dark = fullScale;
  for (const Histogram& place : places)
    if (countOf(place)) dark = std::min(dark, darkEnd(place, fullScale / 128));
  if (dark <= (fullScale + 1) / 16) return dark;
  const uint32_t bright = std::max(dark, quantile(sumOf(places), kBrightShare));
  return std::min({dark, bright - dark, fullScale / 8});
}

}  // namespace vistrel::app
