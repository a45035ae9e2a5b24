// Black and white of a frame, from its histograms.
#pragma once

#include "apps/look/frame_statistics.h"

namespace vistrel::app {

// The largest value of the frame's bits; of the bits in use, if the frame has 16, whose real depth
// may be lower.
uint32_t fullScaleOf(const Histogram& samples, uint32_t bits);

// The value at which the sensor clips, if the histogram shows it; full scale otherwise.
uint32_t whiteOf(const Histogram& samples, uint32_t fullScale);

// The level of the darkest samples of all places, apart from outliers. One level for all, since a
// scene's colours make the places differ more than a sensor does; at most an eighth of full scale,
// so that a frame without darkness keeps its contrast.
uint32_t blackOf(const std::array<Histogram, 4>& places, uint32_t fullScale);

}  // namespace vistrel::app
