// What a dump without a header may be: size, packing, depth and phase, by the likeness of
// neighbours.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "apps/options/geometry.h"

namespace vistrel::app {

struct Guess {
  uint32_t width, height;
  uint32_t packing;     // VISTREL_PACKING_...
  uint32_t bits;        // significant ones that are in use
  bool highBits;        // of 16-bit words
  uint32_t phase;       // green is measured; of the two that are left, the first is a coin tossed
  uint32_t otherPhase;  // the same with red and blue exchanged; mono has no other
  double score;         // 0..1
};

// The likeliest ones, the best first; of that size alone where it is known. None where no size
// fits.
std::vector<Guess> guessFormat(const std::vector<uint8_t>& bytes,
                               const std::optional<Size>& size = {});

}  // namespace vistrel::app
