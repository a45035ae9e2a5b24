// Draws the arguments of case number n. Small sizes are complete, large ones random.
#pragma once

#include "tests/check/call.h"
#include "tests/check/random.h"

namespace vistrel::core::check {

class Draw : public Random {
 public:
  // kComplete cases cover every size of 1..40 by 1..40 pixels, with binning 0 and with another
  // binning. One case in sixteen has up to 700 pixels per side; a few frames are larger than the
  // caches.
  static constexpr uint32_t kSmall = 40;
  static constexpr uint32_t kLarge = 700;
  static constexpr uint32_t kHuge = 2400;
  static constexpr uint32_t kComplete = 2 * kSmall * kSmall * 16 / 15 + 1;

  Draw(uint64_t seed, uint32_t number);
  // For measuring: only valid arguments, and one large size.
  static Draw forBench(uint64_t seed, uint32_t number);

  // True one time in n, but never when measuring. For unusual arguments and those out of range.
  bool oddly(uint32_t n) { return oneIn(n) && !bench_; }
  // The first cases of a measurement, one per binning: 12 bits to BGR24 by window.
  bool plain() const { return bench_ && number_ < 4; }

  // Draws binning, roiWidth, roiHeight; a size can be 0 if the function allows it.
  void size(Call& call, bool emptyAllowed = true);
  // Draws pattern, seed and place.
  void memory(Call& call, bool wide);
  // Draw srcBits, lutMode and the bit depth of an output sample.
  uint32_t sourceBits();
  uint32_t lutMode();
  uint32_t sampleBits(uint32_t srcBits);

 private:
  uint32_t largeSide(uint32_t factor);
  bool isHuge() const;
  bool isLarge() const;

  uint32_t number_;
  bool bench_ = false;
};

}  // namespace vistrel::core::check
