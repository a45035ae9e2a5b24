// What the C interface makes of frames, in the layout that GStreamer gives to a format.
#pragma once

#include <gst/video/video.h>

#include <cstdint>
#include <string>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::test {

// A raw format, worked out from its name.
struct NamedFormat {
  uint32_t phase, bits, packing;
  size_t row(size_t width) const;     // bytes of a row
  size_t stride(size_t width) const;  // rounded up to 4 bytes
};
NamedFormat namedFormat(const std::string& name);

// The frame as vistrel_convert takes it. The bytes must live as long as it is used.
vistrel_frame frameOf(const NamedFormat& format, uint32_t width, uint32_t height,
                      const std::vector<uint8_t>& bytes, size_t stride);

// The visible bytes of all planes, row by row.
std::vector<uint8_t> visibleBytes(GstBuffer* buffer, const GstVideoInfo& info);

// The same of what vistrel_convert makes, in this format of GStreamer's. The conversion's own
// format is not read.
std::vector<uint8_t> expectedBytes(const vistrel_frame& frame, vistrel_conversion conversion,
                                   const GstVideoInfo& info);

}  // namespace vistrel::test
