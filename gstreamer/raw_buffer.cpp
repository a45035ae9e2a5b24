#include "gstreamer/raw_buffer.h"

#include <bit>

#include "apps/error.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::gstreamer {
namespace {

size_t rowBytes(const vistrel_frame& frame, const RawFormat& format) {
  return packedLayoutOf(packedOf({}, frame.width, 1, format.packing, format.bits)).row_bytes;
}

size_t roundedUp(size_t bytes) { return (bytes + 3) / 4 * 4; }

// The part that a crop meta leaves of a frame. The caps have the size of the part, the video meta
// that of the frame.
vistrel_region croppedBy(const GstVideoCropMeta& crop, const vistrel_frame& frame,
                         const RawStream& stream) {
  if (crop.width != stream.width || crop.height != stream.height)
    app::throwError(app::kRejected, "the buffer's crop is {}x{}; the caps are {}x{}", crop.width,
                    crop.height, stream.width, stream.height);
  const bool fits = crop.x <= frame.width && crop.width <= frame.width - crop.x &&
                    crop.y <= frame.height && crop.height <= frame.height - crop.y;
  if (!fits)
    app::throwError(app::kRejected, "the buffer's crop {}x{}+{}+{} extends beyond its {}x{} pixels",
                    crop.width, crop.height, crop.x, crop.y, frame.width, frame.height);
  return {crop.x, crop.y, crop.width, crop.height};
}

}  // namespace

vistrel_frame frameOf(const RawStream& stream) {
  vistrel_frame frame{};
  frame.width = stream.width;
  frame.height = stream.height;
  frame.bytes_per_sample = stream.format.packing == VISTREL_PACKING_BYTES ? 1 : 2;
  frame.bits = stream.format.bits;
  if (stream.bits && frame.bits == 16 && stream.format.phase == VISTREL_MONO)
    frame.bits = stream.bits;
  frame.phase = stream.format.phase;
  const bool isNative = stream.format.packing == VISTREL_PACKING_BYTES ||
                        (stream.format.packing == VISTREL_PACKING_LITTLE &&
                         std::endian::native == std::endian::little);
  frame.packing = isNative ? 0 : stream.format.packing;
  return frame;
}

size_t usualStride(const RawStream& stream) {
  return roundedUp(rowBytes(frameOf(stream), stream.format));
}

RawBuffer::RawBuffer(GstBuffer* buffer, const RawStream& stream, size_t stride)
    : buffer_(buffer), frame_(frameOf(stream)), visible_{0, 0, stream.width, stream.height} {
  const GstVideoCropMeta* const crop = gst_buffer_get_video_crop_meta(buffer);
  const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer);
  if (crop && meta) frame_.width = meta->width, frame_.height = meta->height;
  if (crop) visible_ = croppedBy(*crop, frame_, stream);
  if (!gst_buffer_map(buffer, &map_, GST_MAP_READ))
    app::throwError(app::kInputOutput, "the buffer can't be mapped");
  try {
    placeRows(stream, stride);
  } catch (...) {
    gst_buffer_unmap(buffer, &map_);
    throw;
  }
}

void RawBuffer::placeRows(const RawStream& stream, size_t stride) {
  const size_t row = rowBytes(frame_, stream.format);
  const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer_);
  size_t offset = 0;
  if (meta && meta->n_planes) {
    if (meta->stride[0] < 0 || static_cast<size_t>(meta->stride[0]) < row)
      app::throwError(app::kRejected, "the buffer's stride is {}; a row has {} bytes",
                      meta->stride[0], row);
    stride = static_cast<size_t>(meta->stride[0]);
    offset = meta->offset[0];
  } else if (!stride) {
    stride = map_.size == row * frame_.height ? row : roundedUp(row);
  }
  if (offset > map_.size)
    app::throwError(app::kRejected, "the buffer begins at byte {}, but has {}", offset, map_.size);
  frame_.samples = map_.data + offset;
  frame_.size = map_.size - offset;
  frame_.stride = stride;
}

}  // namespace vistrel::gstreamer
