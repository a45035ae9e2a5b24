// The host layer as its headers describe it, for every conversion that it accepts: the samples of
// the whole frame first, then all pixels, then their bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "vistrel/vistrel_types.h"

namespace reference {

// The bytes of a frame's row.
size_t hostRowBytes(const vistrel_frame& frame);

// Sample i of row y as it is stored, with its excess bits.
uint32_t hostStoredSample(const vistrel_frame& frame, size_t i, size_t y);

// The samples of a whole frame, prepared.
struct HostSamples {
  uint32_t width, height, channels;
  std::vector<uint16_t> values;

  uint16_t at(size_t x, size_t y, size_t channel) const {
    return values[(y * width + x) * channels + channel];
  }
};
// Red, green, blue in 1/4096: equal ones without white balance.
std::array<uint64_t, 3> hostGains(const vistrel_frame& frame, const vistrel_conversion& conversion);

// What a sample of the finishing stage is scaled to. above: the sample without dark and black.
uint32_t hostScaled(const vistrel_frame& frame, const vistrel_conversion& conversion,
                    const std::array<uint64_t, 3>& gains, uint64_t above, size_t x, size_t y);

HostSamples hostSamples(const vistrel_frame& frame, const vistrel_conversion& conversion);
bool hasExcessBits(const vistrel_frame& frame, uint32_t stored);
char hostColour(uint32_t phase, int64_t x, int64_t y);  // 'R', 'G' or 'B'

// What a conversion reads of its frame: bins of the region, and the padding around them. Columns
// and rows outside the frame are mirrored into it.
struct HostArea {
  int64_t x, y;
  uint32_t width, height;              // samples
  uint32_t pad;                        // pixels of the result on each side that are cropped
  uint32_t resultWidth, resultHeight;  // pixels
  static int64_t mirrored(int64_t position, int64_t size);
};
HostArea hostArea(const vistrel_frame& frame, const vistrel_conversion& conversion);

// The width and the height of the image, in pixels.
std::array<uint32_t, 2> hostImageSize(const vistrel_frame& frame,
                                      const vistrel_conversion& conversion);

// The significant bits of a prepared sample.
uint32_t hostBits(const vistrel_frame& frame, const vistrel_conversion& conversion);

// Finished pixels of one sample, or of blue, green and red.
struct HostPixels {
  uint32_t width, height, channels;
  std::vector<uint16_t> samples;

  uint32_t at(size_t x, size_t y, size_t channel) const {
    return samples[(y * width + x) * channels + channel];
  }
};
HostPixels hostPixels(const vistrel_frame& frame, const vistrel_conversion& conversion);

// How an image lies in memory.
struct HostPlane {
  size_t offset, stride, rowBytes, rows;
};
size_t hostSampleBytes(uint32_t format);
size_t hostChannels(uint32_t format);  // of a pixel in the first plane
size_t hostImageRowBytes(uint32_t format, size_t width);
std::vector<HostPlane> hostPlanes(uint32_t format, size_t width, size_t height, size_t stride);

// What the finishing stage makes of pixels: `bits` significant ones become 16 or 8.
HostPixels hostFinished(const HostPixels& pixels, uint32_t bits, const vistrel_frame& frame,
                        const vistrel_conversion& conversion);

HostPixels hostTurned(const HostPixels& pixels, uint32_t orientation);

// Stores pixels in a format. A negative stride is allowed if the format has one plane.
void hostStore(const HostPixels& pixels, uint32_t format, uint8_t* image, ptrdiff_t stride);

// Returns VISTREL_OK, or VISTREL_EXCESS_SAMPLE with the image untouched.
int32_t hostConvert(const vistrel_frame& frame, const vistrel_conversion& conversion,
                    const vistrel_image& image);

}  // namespace reference
