#include "apps/tools/guess/sample_kind.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "apps/names/pixel_format.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

using Samples = std::vector<uint16_t>;

// Finds the significant bits of 16-bit samples, and whether they are the highest ones.
void describeBits(const Samples& s, SampleKind& kind) {
  uint32_t all = 0;
  for (const uint16_t sample : s) all |= sample;
  const auto used = static_cast<uint32_t>(std::bit_width(all));
  const auto zeros = static_cast<uint32_t>(std::countr_zero(all | 65536u));
  kind.highBits = zeros >= 2 && used == 16;
  kind.bits = std::clamp(kind.highBits ? 16 - zeros : used + (used & 1), 8u, 16u);
}

// Green is on the diagonal whose two sites are more alike.
void describePhase(const Samples& s, uint32_t width, uint32_t height, SampleKind& kind) {
  double falling = 0, rising = 0;  // sites (0, 0) and (1, 1); sites (0, 1) and (1, 0)
  double adjacent = 0, twice = 0;
  const uint32_t step = std::max(2u, height / 100 & ~1u);  // some rows suffice
  for (uint32_t y = 0; y + 2 < height; y += step)
    for (uint32_t x = 0; x + 2 < width; x += 2) {
      const size_t at = size_t{y} * width + x;
      falling += std::abs(s[at] - s[at + width + 1]);
      rising += std::abs(s[at + 1] - s[at + width]);
      adjacent += std::abs(s[at] - s[at + 1]);
      twice += std::abs(s[at] - s[at + 2]);
    }
  kind.phase = VISTREL_MONO;
  if (adjacent >= twice) kind.phase = rising <= falling ? VISTREL_RGGB : VISTREL_GRBG;
  kind.otherPhase = vistrel_phase_at(kind.phase, 1, 1);
}

}  // namespace

SampleKind sampleKindOf(const std::vector<uint8_t>& bytes, const Layout& layout, uint32_t height) {
  RowReader reader(bytes, layout);
  Samples samples(size_t{layout.width} * height);
  for (uint32_t y = 0; y < height; ++y)
    reader.read(y, 0, layout.width, samples.data() + size_t{y} * layout.width);
  SampleKind kind{layout.packing.bits, false, VISTREL_MONO, VISTREL_MONO};
  if (are16Bit(layout.packing.code)) describeBits(samples, kind);
  describePhase(samples, layout.width, height, kind);
  return kind;
}

}  // namespace vistrel::app
