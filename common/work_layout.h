// The geometry of the work buffer: the stream's scratch image of three samples a pixel.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/mosaic.h"

namespace vistrel::core {

constexpr uint32_t kChannels = 3;         // samples a pixel
constexpr size_t kGuard = 2;              // pixels on every side of the image
constexpr uint32_t kAllocatedBorder = 3;  // pixels allocated on every side: the guard and one more

// Where the image lies in the work buffer, in samples.
struct WorkLayout {
  size_t S;      // distance of two rows
  size_t side;   // samples on either side of a row
  size_t above;  // rows above the image

  // Rows of `width` pixels with the guard on every side.
  static constexpr WorkLayout guarded(uint32_t width) {
    return {kChannels * (width + 2 * kGuard), kChannels * kGuard, kGuard};
  }

  // Rows of `width` pixels and nothing else.
  static constexpr WorkLayout compact(uint32_t width) { return {size_t{kChannels} * width, 0, 0}; }

  // Image pixel (0, y); y may lie in the guard.
  constexpr size_t row(ptrdiff_t y) const {
    return static_cast<size_t>(y + static_cast<ptrdiff_t>(above)) * S + side;
  }

  constexpr size_t pixelStride() const { return S / kChannels; }
};

constexpr WorkLayout guardedLayout(const Region& region) { return WorkLayout::guarded(region.Wf); }
constexpr WorkLayout compactLayout(const Region& region) { return WorkLayout::compact(region.Wf); }

// quirk: gray-stride. Rows of a gray block lie pixelStride samples apart, a third of the distance
// of colour rows; at binning 1 they lie a guarded row of the output's width apart in any layout.
constexpr size_t grayStride(unsigned binning, size_t pixelStride, uint32_t width) {
  return binning == 1 ? WorkLayout::guarded(width).S : pixelStride;
}

// Samples of a work buffer for images of this size.
constexpr uint64_t workBufferSamples(uint64_t width, uint64_t height) {
  return kChannels * (width + 2 * kAllocatedBorder) * (height + 2 * kAllocatedBorder);
}

// Bytes of a work buffer of 16-bit samples, whose number wraps at 2^32.
constexpr size_t workBufferBytes(uint32_t width, uint32_t height) {
  return size_t{static_cast<uint32_t>(workBufferSamples(width, height))} * sizeof(uint16_t);
}

}  // namespace vistrel::core
