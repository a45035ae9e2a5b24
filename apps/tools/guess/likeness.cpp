#include "apps/tools/guess/likeness.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

namespace vistrel::app {

double difference(const Samples& s, size_t distance) {
  constexpr size_t kPlaces = 5003;
  if (distance >= s.size()) return HUGE_VAL;
  const size_t places = s.size() - distance, step = std::max<size_t>(1, places / kPlaces) | 1;
  double sum = 0;
  size_t count = 0;
  for (size_t i = 0; i < places; i += step, ++count) sum += std::abs(s[i] - s[i + distance]);
  return sum / static_cast<double>(count);
}

double unlike(const Samples& s) {
  double sum = 0;
  constexpr int kDistances = 5;
  for (int i = 1; i <= kDistances; ++i) sum += difference(s, s.size() / 7 * i + 2 * i + 1);
  return std::max(sum / kDistances, kFlat);
}

double evenness(const std::vector<uint8_t>& bytes, uint32_t period) {
  double min = HUGE_VAL, max = 0;
  uint32_t everywhere = 255, anywhere = 0;  // bits set at all positions, and at any
  for (uint32_t k = 0; k < period; ++k) {
    Samples every((bytes.size() - k + period - 1) / period);
    uint32_t set = 0;
    for (size_t i = 0; i < every.size(); ++i) set |= every[i] = bytes[i * period + k];
    everywhere &= set;
    anywhere |= set;
    const double likeness = difference(every, 2) / unlike(every);
    min = std::min(min, likeness);
    max = std::max(max, likeness);
  }
  if (std::popcount(anywhere & ~everywhere) >= 2) return 0;
  return max > 0 ? min / max : 1;
}

}  // namespace vistrel::app
