// A buffer of raw samples as a frame.
#pragma once

#include <gst/gst.h>

#include "gstreamer/formats.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::gstreamer {

// A stream of frames, as its caps describe it.
struct RawStream {
  RawFormat format;
  uint32_t width = 0, height = 0;
  uint32_t bits = 0;  // significant bits of 16-bit mono samples; 0: all of them

  bool operator==(const RawStream&) const = default;
};

// Of buffers without a video meta: rows that are rounded up to 4 bytes.
size_t usualStride(const RawStream& stream);

// The frame without its samples.
vistrel_frame frameOf(const RawStream& stream);

class RawBuffer {
 public:
  // `stride` is that of buffers without a video meta. If it is 0, it is the usual one; in a buffer
  // that is just as long as rows without padding, theirs. Throws ProgramError if the buffer does
  // not fit the stream.
  RawBuffer(GstBuffer* buffer, const RawStream& stream, size_t stride);
  ~RawBuffer() { gst_buffer_unmap(buffer_, &map_); }
  RawBuffer(const RawBuffer&) = delete;
  RawBuffer& operator=(const RawBuffer&) = delete;

  const vistrel_frame& frame() const { return frame_; }

  // The part of the frame that is the picture: the crop meta's, or the whole frame.
  const vistrel_region& visible() const { return visible_; }

 private:
  void placeRows(const RawStream& stream, size_t stride);

  GstBuffer* buffer_;
  GstMapInfo map_ = GST_MAP_INFO_INIT;
  vistrel_frame frame_;
  vistrel_region visible_;
};

}  // namespace vistrel::gstreamer
