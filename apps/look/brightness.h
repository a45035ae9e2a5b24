// How bright a picture will be.
#pragma once

#include <span>

#include "apps/look/curve.h"
#include "apps/look/frame_statistics.h"

namespace vistrel::app {

// The colours of a frame as gains, highlights and matrix leave them, before exposure: 1 is what
// clips with a gain of 1.
class Brightness {
 public:
  Brightness(std::span<const Block> blocks, const Look& look);

  // The mean luminance of the encoded colours, by BT.709's weights, from 0 to 1.
  double mean(double exposure, const CurveSketch& curve) const;

  // The level that this part of the blocks that aren't clipped stay below in all colours.
  double highlight(double part) const;

  // The median luminance, before it is encoded.
  double median() const;

  // Where a neutral clips, and the part of the blocks that are clipped.
  double neutralClip() const { return neutralClip_; }
  double clipped() const { return clipped_; }

 private:
  static constexpr uint32_t kLevels = 4096;

  // Roots of light, so that dark colours are told apart too.
  static uint32_t levelOf(double x);
  static double lightOf(uint32_t level);

  std::vector<double> weights_ = std::vector<double>(kLevels);
  Histogram highest_ = Histogram(kLevels), luminance_ = Histogram(kLevels);
  double amplification_;  // the largest gain, by which colours are divided meanwhile
  double neutralClip_, clipped_ = 0;
};

}  // namespace vistrel::app
