// The contents of test frames.
#pragma once

#include <array>
#include <cstdint>

namespace vistrel::core::check {

enum class Pattern : uint32_t {
  random,
  flat,
  gradient,
  mosaic,    // four values, aligned with the sites of a mosaic
  impulses,  // a few bright or dark samples on a flat ground
  extremes,  // every sample 0 or the maximum
  smooth,    // slow waves under a little noise
  clamps,    // values around the limits of 10 bits and of the depth, in small blocks
  stray      // all 16 bits, whatever the depth
};
constexpr uint32_t kPatterns = 9;

// Computes any sample of a frame from its position.
class Frame {
 public:
  // maximum: the depth's largest sample; largest: the sample type's.
  Frame(Pattern pattern, uint64_t seed, uint32_t maximum, uint32_t largest);

  uint32_t at(uint32_t x, uint32_t y) const;

 private:
  uint64_t noise(uint64_t x, uint64_t y) const;
  uint32_t smoothAt(uint32_t x, uint32_t y) const;
  uint32_t clampAt(uint32_t x, uint32_t y) const;

  Pattern pattern_;
  uint64_t seed_;
  uint32_t maximum_, largest_;
  std::array<uint32_t, 5> constants_;  // the values that the pattern uses
  uint32_t periodX_, periodY_;
};

}  // namespace vistrel::core::check
