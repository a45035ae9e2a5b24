// Black and white of a frame, from its histograms.
#pragma once

#include "apps/look/frame_statistics.h"

namespace vistrel::app {

// The largest value of the frame's bits; of the bits in use, if the frame has 16, whose real depth
// may be lower.
uint32_t fullScaleOf(const Histogram& samples, uint32_t bits);

// The value at which the sensor clips, if the histograms show it above a quarter of full scale;
// full scale otherwise. A value below seven eighths that most samples of a place have is that of a
// plain surface.
uint32_t whiteOf(const std::array<Histogram, 4>& places, uint32_t fullScale);

// The level of the darkest samples of all places, apart from outliers. One level for all, since a
// scene's colours make the places differ more than a sensor does. Sensors add up to a sixteenth of
// full scale. A higher level is at most an eighth, and at most the span from the darkest to the
// brightest samples, so that a frame without darkness keeps its contrast, such as a plain wall.
uint32_t blackOf(const std::array<Histogram, 4>& places, uint32_t fullScale);

}  // namespace vistrel::app
