#include "apps/tools/scene/exposure.h"

#include <cmath>

namespace vistrel::app {
namespace {

// splitmix64: a pure function.
uint64_t scramble(uint64_t v) {
  v += 0x9E3779B97F4A7C15;
  v = (v ^ (v >> 30)) * 0xBF58476D1CE4E5B9;
  v = (v ^ (v >> 27)) * 0x94D049BB133111EB;
  return v ^ (v >> 31);
}

}  // namespace

// The sum of four uniformly distributed numbers.
double normalNoise(uint64_t seed, uint32_t x, uint32_t y) {
  const uint64_t v = scramble(scramble(seed) ^ (uint64_t{y} << 32 | x));
  const double sum =
      static_cast<double>((v & 65535) + (v >> 16 & 65535) + (v >> 32 & 65535) + (v >> 48));
  return (sum / 65535 - 2) * std::sqrt(3.0);
}

Image emptyImage(uint32_t width, uint32_t height, uint32_t bits) {
  const vistrel_frame frame{nullptr,      0, 0, width, height, bits > 8 ? 2u : 1u, bits,
                            VISTREL_MONO, 0, 0, {}};
  vistrel_conversion conversion = defaultConversion(frame);
  if (bits > 8) conversion.format = VISTREL_MONO16;
  return {vistrel::layoutOf(frame, conversion), {}};
}

}  // namespace vistrel::app
