// A buffer of pixels as an image.
#pragma once

#include <functional>

#include "gstreamer/formats.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::gstreamer {

class PictureBuffer {
 public:
  // Throws ProgramError if the buffer does not fit the picture.
  PictureBuffer(GstBuffer* buffer, const GstVideoInfo& info);
  ~PictureBuffer() { gst_video_frame_unmap(&frame_); }
  PictureBuffer(const PictureBuffer&) = delete;
  PictureBuffer& operator=(const PictureBuffer&) = delete;

  // Fills an image of this layout by `convert`, which throws if it fails. Only planes that lie
  // in another way than libvistrelhost puts them are made in `scratch` and copied.
  void fill(const vistrel_layout& layout, Bytes& scratch,
            const std::function<void(const vistrel_image&)>& convert);

 private:
  size_t available(guint plane) const;
  uint8_t* rowOf(guint plane, size_t y) const;
  void checkStrides() const;
  bool isInOnePiece() const;
  void fillWide(const std::function<void(const vistrel_image&)>& convert);
  void copyPlanes(const uint8_t* pixels, const vistrel_layout& layout);

  GstVideoFrame frame_{};
};

}  // namespace vistrel::gstreamer
