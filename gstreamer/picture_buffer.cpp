#include "gstreamer/picture_buffer.h"

#include <cstring>

#include "apps/error.h"
#include "gstreamer/widen.h"

namespace vistrel::gstreamer {
namespace {

size_t strideOf(const GstVideoFrame& frame, guint plane) {
  return static_cast<size_t>(GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane));
}

uint8_t* firstByteOf(const GstVideoFrame& frame, guint plane) {
  return static_cast<uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane));
}

size_t rowsOf(const GstVideoFrame& frame, guint plane) {
  return static_cast<size_t>(GST_VIDEO_FRAME_COMP_HEIGHT(&frame, plane));
}

// The bytes of a row of a plane.
size_t rowBytesOf(const GstVideoFrame& frame, guint plane) {
  return static_cast<size_t>(GST_VIDEO_FRAME_COMP_WIDTH(&frame, plane)) *
         static_cast<size_t>(GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, plane));
}

// Where the colours are in a pixel of 16-bit samples and alpha.
WideOrder wideOrderOf(const GstVideoFormatInfo& format) {
  const auto place = [&format](size_t component) { return size_t{format.poffset[component]} / 2; };
  const bool isLittle = GST_VIDEO_FORMAT_INFO_IS_LE(&format);
  return {place(GST_VIDEO_COMP_R), place(GST_VIDEO_COMP_G), place(GST_VIDEO_COMP_B),
          place(GST_VIDEO_COMP_A), isLittle != (G_BYTE_ORDER == G_LITTLE_ENDIAN)};
}

}  // namespace

PictureBuffer::PictureBuffer(GstBuffer* buffer, const GstVideoInfo& info) {
  const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer);
  const bool fits = !meta || (meta->format == GST_VIDEO_INFO_FORMAT(&info) &&
                              meta->width == static_cast<guint>(GST_VIDEO_INFO_WIDTH(&info)) &&
                              meta->height == static_cast<guint>(GST_VIDEO_INFO_HEIGHT(&info)));
  if (!fits || !gst_video_frame_map(&frame_, &info, buffer, GST_MAP_READWRITE))
    app::throwError(app::kRejected, "the picture's buffer is not one for {}x{} {}",
                    GST_VIDEO_INFO_WIDTH(&info), GST_VIDEO_INFO_HEIGHT(&info),
                    GST_VIDEO_INFO_NAME(&info));
  try {
    checkStrides();
  } catch (...) {
    gst_video_frame_unmap(&frame_);
    throw;
  }
}

void PictureBuffer::checkStrides() const {
  for (guint p = 0; p < GST_VIDEO_FRAME_N_PLANES(&frame_); ++p) {
    const int stride = GST_VIDEO_FRAME_PLANE_STRIDE(&frame_, p);
    const size_t row = rowBytesOf(frame_, p);
    if (stride < 0 || static_cast<size_t>(stride) < row)
      app::throwError(app::kRejected, "the picture's stride is {}; a row has {} bytes", stride,
                      row);
    if (available(p) < strideOf(frame_, p) * (rowsOf(frame_, p) - 1) + row)
      app::throwError(app::kRejected, "the picture's buffer ends before its last row");
  }
}

// The bytes from a plane's first one to the end of its memory.
size_t PictureBuffer::available(guint plane) const {
  const bool hasOwnMap = plane == 0 || frame_.map[plane].data;
  const GstMapInfo& map = frame_.map[hasOwnMap ? plane : 0];
  return static_cast<size_t>(map.data + map.size - firstByteOf(frame_, plane));
}

uint8_t* PictureBuffer::rowOf(guint plane, size_t y) const {
  return firstByteOf(frame_, plane) + y * strideOf(frame_, plane);
}

// Whether the planes lie as those of an image.
bool PictureBuffer::isInOnePiece() const {
  const guint planes = GST_VIDEO_FRAME_N_PLANES(&frame_);
  const size_t stride = strideOf(frame_, 0);
  const size_t next = planes == 3 ? (stride + 1) / 2 : stride;
  const uint8_t* expected = firstByteOf(frame_, 0) + rowsOf(frame_, 0) * stride;
  for (guint p = 1; p < planes; ++p) {
    if (firstByteOf(frame_, p) != expected || strideOf(frame_, p) != next) return false;
    expected += next * rowsOf(frame_, p);
  }
  return true;
}

void PictureBuffer::fill(const vistrel_layout& layout, Bytes& scratch,
                         const std::function<void(const vistrel_image&)>& convert) {
  const auto stride = static_cast<ptrdiff_t>(strideOf(frame_, 0));
  const PictureFormat* const format = findPictureFormat(GST_VIDEO_FRAME_FORMAT(&frame_));
  if (isWidened(*format)) return fillWide(convert);
  if (isInOnePiece()) return convert({firstByteOf(frame_, 0), available(0), stride, {}});
  scratch.resize(layout.bytes);
  convert({scratch.data(), scratch.size(), 0, {}});
  copyPlanes(scratch.data(), layout);
}

// The image ends where the rows end, so that pixels can be widened in place.
void PictureBuffer::fillWide(const std::function<void(const vistrel_image&)>& convert) {
  const auto width = static_cast<size_t>(GST_VIDEO_FRAME_WIDTH(&frame_));
  convert({firstByteOf(frame_, 0) + 2 * width,
           available(0) - 2 * width,
           static_cast<ptrdiff_t>(strideOf(frame_, 0)),
           {}});
  const WideOrder order = wideOrderOf(*frame_.info.finfo);
  for (size_t y = 0; y < rowsOf(frame_, 0); ++y) widenRow(rowOf(0, y), width, order);
}

void PictureBuffer::copyPlanes(const uint8_t* pixels, const vistrel_layout& layout) {
  const guint planes = GST_VIDEO_FRAME_N_PLANES(&frame_);
  for (guint p = 0; p < planes; ++p) {
    const size_t stride = p && planes == 3 ? (layout.row_bytes + 1) / 2 : layout.row_bytes;
    const size_t row = rowBytesOf(frame_, p);
    for (size_t y = 0; y < rowsOf(frame_, p); ++y, pixels += stride)
      std::memcpy(rowOf(p, y), pixels, row);
  }
}

}  // namespace vistrel::gstreamer
