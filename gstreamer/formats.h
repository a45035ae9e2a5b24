// The formats of streams, by their names in caps.
#pragma once

#include <gst/video/video.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel::gstreamer {

// How raw samples lie in a buffer.
struct RawFormat {
  std::string name;
  uint32_t phase;  // VISTREL_GRBG to VISTREL_MONO
  uint32_t bits;
  uint32_t packing;  // VISTREL_PACKING_...

  bool operator==(const RawFormat&) const = default;
};

// GStreamer's own names where it has some. Otherwise a mosaic has the name that PFNC gives it, or
// else libcamera. Mono formats without a name of GStreamer's are left out: there are no caps for
// them.
const std::vector<RawFormat>& rawFormats();

// Null if there is none.
const RawFormat* findRawFormat(std::string_view name);

constexpr uint32_t kNoFormat = ~0u;

struct PictureFormat {
  GstVideoFormat video;
  uint32_t mosaic;  // the format of images of mosaics: VISTREL_...
  uint32_t mono;    // that of mono frames; kNoFormat if there is none
};

// In the order in which they are preferred.
const std::vector<PictureFormat>& pictureFormats();

const PictureFormat* findPictureFormat(GstVideoFormat video);

bool isYuv(const PictureFormat& format);

// Formats with 16-bit samples and alpha, which are made of VISTREL_RGB48.
bool isWidened(const PictureFormat& format);

}  // namespace vistrel::gstreamer
