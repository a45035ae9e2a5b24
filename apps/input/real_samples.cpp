#include "apps/input/real_samples.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace vistrel::app {
namespace {

constexpr double kFullScale = 65535;
// Values of 0 to 1 may exceed 1 a little, from resampling. No sensor counts to 2.
constexpr double kLargestNormal = 2;

}  // namespace

void RealValues::add(const double* values, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    if (!std::isfinite(values[i])) {
      ++blank;
      continue;
    }
    least = std::min(least, values[i]);
    largest = std::max(largest, values[i]);
  }
}

RealRange usualRange(const RealValues& values) {
  if (values.largest <= kLargestNormal) return {0, 1};
  return {0, std::max(values.largest, kFullScale)};
}

bool isIdentity(const RealRange& range) { return range.low == 0 && range.high == kFullScale; }

std::string rangeNote(const RealRange& range, const RealValues& values) {
  std::string note = fmt::format("its values {} to {} become samples 0 to 65535, by --range {}:{}",
                                 range.low, range.high, range.low, range.high);
  if (values.least < range.low || values.largest > range.high)
    note += fmt::format("; they go from {} to {}, which is clipped", values.least, values.largest);
  if (values.blank) note += fmt::format("; {} without a value become 0", values.blank);
  return note;
}

void scaleToSamples(const double* values, size_t count, const RealRange& range, uint16_t* to) {
  const double scale = kFullScale / (range.high - range.low);
  for (size_t i = 0; i < count; ++i) {
    const double sample = std::floor((values[i] - range.low) * scale + 0.5);
    to[i] = std::isfinite(values[i]) ? static_cast<uint16_t>(std::clamp(sample, 0.0, kFullScale))
                                     : uint16_t{0};
  }
}

}  // namespace vistrel::app
