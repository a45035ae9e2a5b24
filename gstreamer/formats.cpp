#include "gstreamer/formats.h"

#include <algorithm>

#include "apps/names/pixel_format.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::gstreamer {
namespace {

std::string nameOf(const app::PixelFormat& format) {
  if (!format.gstreamer.empty() || format.phase == VISTREL_MONO) return format.gstreamer;
  return format.pfnc.empty() ? format.libcamera : format.pfnc;
}

std::vector<RawFormat> makeRawFormats() {
  std::vector<RawFormat> formats;
  for (const app::PixelFormat& format : app::pixelFormats()) {
    if (!format.phase) continue;
    const std::string name = nameOf(format);
    if (!name.empty()) formats.push_back({name, *format.phase, format.bits, format.packing});
  }
  return formats;
}

}  // namespace

const std::vector<RawFormat>& rawFormats() {
  static const std::vector<RawFormat> formats = makeRawFormats();
  return formats;
}

const RawFormat* findRawFormat(std::string_view name) {
  const auto found = std::ranges::find(rawFormats(), name, &RawFormat::name);
  return found == rawFormats().end() ? nullptr : &*found;
}

const std::vector<PictureFormat>& pictureFormats() {
  static const std::vector<PictureFormat> formats{
      {GST_VIDEO_FORMAT_BGRx, VISTREL_BGRA32, kNoFormat},
      {GST_VIDEO_FORMAT_RGBx, VISTREL_RGBA32, kNoFormat},
      {GST_VIDEO_FORMAT_xRGB, VISTREL_ARGB32, kNoFormat},
      {GST_VIDEO_FORMAT_BGRA, VISTREL_BGRA32, kNoFormat},
      {GST_VIDEO_FORMAT_RGBA, VISTREL_RGBA32, kNoFormat},
      {GST_VIDEO_FORMAT_ARGB, VISTREL_ARGB32, kNoFormat},
      {GST_VIDEO_FORMAT_BGR, VISTREL_BGR24, kNoFormat},
      {GST_VIDEO_FORMAT_RGB, VISTREL_RGB24, kNoFormat},
      {GST_VIDEO_FORMAT_NV12, VISTREL_NV12, kNoFormat},
      {GST_VIDEO_FORMAT_I420, VISTREL_I420, kNoFormat},
      {GST_VIDEO_FORMAT_GRAY8, VISTREL_GRAY8, VISTREL_MONO8},
      // The samples of libvistrelhost are in the machine's byte order.
      {gst_video_format_from_string(GST_VIDEO_NE(GRAY16)), VISTREL_GRAY16, VISTREL_MONO16},
      {GST_VIDEO_FORMAT_ARGB64, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_ARGB64_LE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_ARGB64_BE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_RGBA64_LE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_RGBA64_BE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_BGRA64_LE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_BGRA64_BE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_ABGR64_LE, VISTREL_RGB48, kNoFormat},
      {GST_VIDEO_FORMAT_ABGR64_BE, VISTREL_RGB48, kNoFormat},
  };
  return formats;
}

const PictureFormat* findPictureFormat(GstVideoFormat video) {
  const auto found = std::ranges::find(pictureFormats(), video, &PictureFormat::video);
  return found == pictureFormats().end() ? nullptr : &*found;
}

bool isYuv(const PictureFormat& format) {
  return format.mosaic == VISTREL_NV12 || format.mosaic == VISTREL_I420;
}

bool isWidened(const PictureFormat& format) { return format.mosaic == VISTREL_RGB48; }

}  // namespace vistrel::gstreamer
