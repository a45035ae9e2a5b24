// Guesses size, packing, depth and phase of a headerless raw file from the similarity of
// neighbouring samples.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "apps/options/geometry.h"

namespace vistrel::app {

struct Guess {
  uint32_t width, height;
  uint32_t packing;     // VISTREL_PACKING_...
  uint32_t bits;        // significant bits in use
  bool highBits;        // of 16-bit samples, the high bits are significant
  uint32_t phase;       // the green sites are measured; red and blue are arbitrary
  uint32_t otherPhase;  // with red and blue exchanged; the same for mono
  double score;         // 0..1
};

// The most likely guesses, best first; only those of `size` if it is given. Empty if no size
// fits.
std::vector<Guess> guessFormat(const std::vector<uint8_t>& bytes,
                               const std::optional<Size>& size = {});

}  // namespace vistrel::app
