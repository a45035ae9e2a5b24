// What test frames look like.
#pragma once

#include <cstdint>

namespace vistrel::check {

enum class Pattern : uint32_t {
  random,
  flat,
  gradient,
  mosaic,    // four values, aligned with the sites of a mosaic
  impulses,  // a few bright or dark samples on a flat ground
  extremes,  // every sample 0 or the maximum
  smooth,    // slow waves under a little noise
  clamps,    // values round the limits of 10 bits and of the depth, in small blocks
  stray      // all 16 bits, whatever the depth
};
constexpr uint32_t kPatterns = 9;

// A frame without memory: any sample by its position.
struct Frame {
  Pattern pattern;
  uint64_t seed;
  uint32_t maximum;   // the depth's largest sample
  uint32_t largest;   // the sample type's

  uint32_t at(uint32_t x, uint32_t y) const;

 private:
  uint64_t noise(uint64_t x, uint64_t y) const;
  uint32_t constant(uint32_t which) const;
  uint32_t smoothAt(uint32_t x, uint32_t y) const;
  uint32_t clampAt(uint32_t x, uint32_t y) const;
};

}  // namespace vistrel::check
