#include "tests/check/pattern.h"

#include <algorithm>
#include <array>

#include "tests/check/random.h"

namespace vistrel::check {

uint64_t Frame::noise(uint64_t x, uint64_t y) const { return mix(seed ^ mix((x << 32) + y + 1)); }

// One of the frame's own few values; the usual suspects among them.
uint32_t Frame::constant(uint32_t which) const {
  Random random(seed + which);
  const uint32_t value = static_cast<uint32_t>(random.next() % (uint64_t{maximum} + 1));
  return std::min(maximum, random.pick({value, value, value, 0, maximum, 1, 1023}));
}

// A triangle wave either way.
uint32_t Frame::smoothAt(uint32_t x, uint32_t y) const {
  Random random(seed);
  const uint32_t periodX = 8 + random.below(90), periodY = 8 + random.below(90);
  const auto wave = [](uint32_t t, uint32_t period) {
    const uint32_t phase = t % period;
    return std::min(phase, period - phase) * 256 / period;  // 0..128
  };
  const uint64_t level = wave(x, periodX) + wave(y, periodY);  // 0..256
  const uint32_t value = static_cast<uint32_t>(level * maximum / 256);
  return std::min<uint32_t>(maximum, value + static_cast<uint32_t>(noise(x, y) & 3));
}

uint32_t Frame::clampAt(uint32_t x, uint32_t y) const {
  const bool blocks = seed & 1;
  const uint64_t n = blocks ? noise(x / 3, y / 2) : noise(x, y);
  const std::array<uint32_t, 10> limits = {0,    1,    1022,          1023,    1024,
                                           1030, 2047, maximum / 2, maximum - 1, maximum};
  return std::min(maximum, limits[n % limits.size()]);
}

uint32_t Frame::at(uint32_t x, uint32_t y) const {
  const uint64_t n = noise(x, y);
  switch (pattern) {
    case Pattern::random: break;
    case Pattern::flat: return constant(0);
    case Pattern::gradient:
      return (constant(0) + x * (constant(1) / 64 + 1) + y * (constant(2) / 64 + 1)) % (maximum + 1);
    case Pattern::mosaic: return constant(2 * (y & 1) + (x & 1));
    case Pattern::impulses: return n % 23 ? constant(0) : constant(1 + static_cast<uint32_t>(n & 3));
    case Pattern::extremes: return n >> 63 ? maximum : 0;
    case Pattern::smooth: return smoothAt(x, y);
    case Pattern::clamps: return clampAt(x, y);
    case Pattern::stray: return static_cast<uint32_t>(n & largest);
  }
  return static_cast<uint32_t>(n % (uint64_t{maximum} + 1));
}

}  // namespace vistrel::check
