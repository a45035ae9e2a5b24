// Drawing the arguments of case number n. Small sizes come complete, large ones at random.
#pragma once

#include "tests/check/call.h"
#include "tests/check/random.h"

namespace vistrel::core::check {

class Draw : public Random {
 public:
  // Every size of 1..40 by 1..40 once with binning 0 and once with another, one case in sixteen
  // of up to 700 pixels a side, and a few frames beyond the caches come up within kComplete cases.
  static constexpr uint32_t kSmall = 40;
  static constexpr uint32_t kLarge = 700;
  static constexpr uint32_t kHuge = 2400;
  static constexpr uint32_t kComplete = 2 * kSmall * kSmall * 16 / 15 + 1;

  Draw(uint64_t seed, uint32_t number);
  // Arguments that make sense, and one large size, for measuring.
  static Draw forBench(uint64_t seed, uint32_t number);

  // True one time in n, but never when measuring: for arguments out of range.
  bool oddly(uint32_t n) { return oneIn(n) && !bench_; }
  // The first cases of a measurement, one a binning: 12 bits to BGR24 by window.
  bool plain() const { return bench_ && number_ < 4; }

  // binning, roiWidth, roiHeight; 0 among the sizes where the function allows it.
  void size(Call& call, bool emptyAllowed = true);
  // pattern, seed and place.
  void memory(Call& call, bool wide);
  // srcBits, lutMode and a bit depth of an output sample.
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
