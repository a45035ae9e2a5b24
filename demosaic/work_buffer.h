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
void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                      uint8_t* pWork);
void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                      uint16_t* pWork);

// The same for a region.
template <class T>
void scatterMosaic(const Region& region, size_t sourceStride, const T* pSrc, T* pWork);

}  // namespace vistrel::core
