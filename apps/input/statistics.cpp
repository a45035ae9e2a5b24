#include "apps/input/statistics.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <memory>
#include <numeric>

namespace vistrel::app {
namespace {

// The number of samples of each value.
using SampleCounts = std::array<uint64_t, 65536>;

template <class T>
void count(const vistrel_frame& frame, SampleCounts& histogram) {
  const T* samples = static_cast<const T*>(frame.samples);
  std::for_each(samples, samples + frame.size / sizeof(T), [&](T s) { ++histogram[s]; });
}

double countFrom(const SampleCounts& histogram, uint32_t value) {
  return static_cast<double>(
      std::accumulate(histogram.begin() + value, histogram.end(), uint64_t{0}));
}

uint32_t fullScale(uint32_t bits, uint32_t zeroLowBits, bool highBits) {
  const uint32_t all = highBits ? 0x10000 - (0x10000u >> bits) : (1u << bits) - 1;
  return all >> zeroLowBits << zeroLowBits;
}

}  // namespace

Statistics statisticsOf(const vistrel_frame& frame, std::optional<double> white) {
  const auto histogram = std::make_unique<SampleCounts>();
  frame.bytes_per_sample == 1 ? count<uint8_t>(frame, *histogram)
                              : count<uint16_t>(frame, *histogram);
  Statistics s{};
  s.lowest = 65535;
  uint32_t bits = 0;
  double sum = 0;
  for (uint32_t value = 0; value < histogram->size(); ++value) {
    const uint64_t n = (*histogram)[value];
    if (!n) continue;
    bits |= value;
    sum += static_cast<double>(n) * value;
    s.lowest = std::min(s.lowest, value);
    s.highest = value;
  }
  const double all = static_cast<double>(frame.size / frame.bytes_per_sample);
  s.mean = sum / all;
  s.usedBits = static_cast<uint32_t>(std::bit_width(bits));
  s.zeroLowBits = bits ? static_cast<uint32_t>(std::countr_zero(bits)) : 0;
  s.fullScale = fullScale(frame.bits == 16 && bits ? s.usedBits : frame.bits, s.zeroLowBits,
                          frame.alignment == VISTREL_HIGH_BITS);
  const double most = s.fullScale;
  s.saturation = static_cast<uint32_t>(std::min(std::ceil(white.value_or(most)), most));
  s.percentSaturated = 100 * countFrom(*histogram, s.saturation) / all;
  s.percentAtHighest = 100 * countFrom(*histogram, s.highest) / all;
  return s;
}

}  // namespace vistrel::app
