// The work buffer: the stream's scratch image, three samples a pixel.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"

namespace vistrel::core {

constexpr size_t kGuard = 2;  // pixels on every side of the image

// Where the image lies in the work buffer, in samples.
struct WorkLayout {
  size_t S;      // distance of two rows
  size_t side;   // what lies beside a row on either side
  size_t above;  // rows above the image

  // Image pixel (0, y); y may lie in the guard.
  size_t row(ptrdiff_t y) const { return static_cast<size_t>(y + ptrdiff_t(above)) * S + side; }
};

// The image in the middle of Hf + 4 rows of Wf + 4 pixels.
inline WorkLayout guardedLayout(const Region& region) {
  return {size_t{3} * region.Wf + 6 * kGuard, 3 * kGuard, kGuard};
}

// Nothing but the image.
inline WorkLayout compactLayout(const Region& region) { return {size_t{3} * region.Wf, 0, 0}; }

// Scatters the mosaic of the region into the guarded layout of pWork: each sample at its site's
// channel, zero in the other two, green smoothed inside; then the guard of two pixels on every
// side, each a copy of the image two pixels further in.
void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                      uint8_t* pWork);
void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                      uint16_t* pWork);

// The same of a region.
template <class T>
void scatterMosaic(const Region& region, size_t sourceStride, const T* pSrc, T* pWork);

}  // namespace vistrel::core
