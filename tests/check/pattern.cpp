#include "tests/check/pattern.h"

#include <algorithm>

#include "tests/check/random.h"

namespace vistrel::core::check {

Frame::Frame(Pattern pattern, uint64_t seed, uint32_t maximum, uint32_t largest)
    : pattern_(pattern), seed_(seed), maximum_(maximum), largest_(largest) {
  Random random(seed);
  for (uint32_t& constant : constants_) {
    const uint32_t value = random.below(maximum + 1);
    constant = std::min(maximum, random.pick({value, value, value, 0, maximum, 1, 1023}));
  }
  periodX_ = 8 + random.below(90);
  periodY_ = 8 + random.below(90);
}

uint64_t Frame::noise(uint64_t x, uint64_t y) const { return mix(seed_ ^ mix((x << 32) + y + 1)); }

// Triangle waves, and two bits of noise.
uint32_t Frame::smoothAt(uint32_t x, uint32_t y) const {
  const auto wave = [](uint32_t t, uint32_t period) {
    const uint32_t phase = t % period;
    return std::min(phase, period - phase) * 256 / period;  // 0..128
  };
  const uint32_t level = wave(x, periodX_) + wave(y, periodY_);  // 0..256
  const uint32_t value = static_cast<uint32_t>(uint64_t{level} * maximum_ / 256);
  return std::min<uint32_t>(maximum_, value + static_cast<uint32_t>(noise(x, y) & 3));
}

uint32_t Frame::clampAt(uint32_t x, uint32_t y) const {
  const bool blocks = seed_ & 1;
  const uint64_t n = blocks ? noise(x / 3, y / 2) : noise(x, y);
  const std::array<uint32_t, 10> limits = {0,    1,    1022,         1023,         1024,
                                           1030, 2047, maximum_ / 2, maximum_ - 1, maximum_};
  return std::min(maximum_, limits[n % limits.size()]);
}

uint32_t Frame::at(uint32_t x, uint32_t y) const {
  const auto& c = constants_;
  switch (pattern_) {
    case Pattern::random: return static_cast<uint32_t>(noise(x, y) % (uint64_t{maximum_} + 1));
    case Pattern::flat: return c[0];
    case Pattern::gradient:
      return (c[0] + x * (c[1] / 64 + 1) + y * (c[2] / 64 + 1)) % (maximum_ + 1);
    case Pattern::mosaic: return c[2 * (y & 1) + (x & 1)];
    case Pattern::impulses: {
      const uint64_t n = noise(x, y);
      return n % 23 ? c[0] : c[1 + (n & 3)];
    }
    case Pattern::extremes: return noise(x, y) >> 63 ? maximum_ : 0;
    case Pattern::smooth: return smoothAt(x, y);
    case Pattern::clamps: return clampAt(x, y);
    case Pattern::stray: break;
  }
  return static_cast<uint32_t>(noise(x, y) & largest_);
}

}  // namespace vistrel::core::check
