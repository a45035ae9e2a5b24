// The work buffer: the stream's scratch image, three samples per pixel.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"
#include "common/work_layout.h"

namespace vistrel::core {

// Scatters the mosaic of the region into the guarded layout of pWork: each sample goes to its
// site's channel, the other two channels become zero, and green is smoothed inside. Then writes the
// guard of two pixels on every side; each is a copy of the image two pixels further in.
template <class T>
void scatterMosaic(const Region& region, size_t sourceStride, const T* pSrc, T* pWork);

}  // namespace vistrel::core
