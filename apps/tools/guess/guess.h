// Guesses the format of a headerless raw file: size, packing, depth, phase, padding of rows, bytes
// before the first frame and the number of frames. docs/guessing.md explains how.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "apps/options/geometry.h"

namespace vistrel::app {

struct Guess {
  uint32_t width, height;
  uint32_t packing;  // VISTREL_PACKING_...
  uint32_t bits;     // significant bits in use
  bool highBits;     // of 16-bit samples, the high bits are significant
  size_t stride;     // bytes from row to row; 0: packed
  bool continuous;   // rows may begin within a byte
  size_t skip;       // bytes before the first frame
  uint32_t frames;
  size_t trailing;      // bytes after the last frame
  uint32_t phase;       // the green sites are measured; red and blue are arbitrary
  uint32_t otherPhase;  // with red and blue exchanged; the same for mono
  double score;         // 0..1, all together 1
};

// The most likely guesses, best first; only those of `size` if it is given. Empty if nothing looks
// like a frame.
std::vector<Guess> guessFormat(const std::vector<uint8_t>& bytes,
                               const std::optional<Size>& size = {});

}  // namespace vistrel::app
