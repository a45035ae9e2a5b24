#include "tests/gstreamer/expected.h"

#include <gtest/gtest.h>

#include <cstring>

namespace vistrel::test {
namespace {

// GStreamer and libcamera write all colours, PFNC the two of the first row.
uint32_t phaseOf(const std::string& name) {
  if (name.starts_with("GRAY")) return VISTREL_MONO;
  if (!name.starts_with("Bayer")) return parsePhase(name.substr(name[0] == 'S', 4).c_str());
  const std::string row = name.substr(5, 2);
  return row == "GR"   ? VISTREL_GRBG
         : row == "BG" ? VISTREL_BGGR
         : row == "RG" ? VISTREL_RGGB
                       : VISTREL_GBRG;
}

uint32_t packingOf(const std::string& name, uint32_t bits) {
  if (name.ends_with("Packed")) return VISTREL_PACKING_GIGE;
  if (name.ends_with("CSI2P")) return VISTREL_PACKING_MIPI;
  if (name.ends_with("p")) return VISTREL_PACKING_PFNC;
  if (name.ends_with("be") || name.ends_with("BE")) return VISTREL_PACKING_BIG;
  return bits == 8 ? VISTREL_PACKING_BYTES : VISTREL_PACKING_LITTLE;
}

Image imageOf(const vistrel_frame& frame, vistrel_conversion conversion, uint32_t format) {
  conversion.format = format;
  return convert(frame, conversion);
}

// Red, green and blue of all pixels in all orders; alpha is as large as can be.
std::vector<uint8_t> reordered(const Image& rgb, const GstVideoFormatInfo& format) {
  const size_t bytes = format.depth[0] > 8 ? 2 : 1, pixel = format.pixel_stride[0];
  std::vector<uint8_t> all(size_t{rgb.layout.width} * rgb.layout.height * pixel, 0xFF);
  for (size_t i = 0; i < all.size() / pixel; ++i)
    for (size_t c = 0; c < 3; ++c)
      for (size_t b = 0; b < bytes; ++b) {
        const bool isSwapped = bytes == 2 && !GST_VIDEO_FORMAT_INFO_IS_LE(&format);
        all[i * pixel + format.poffset[c] + (isSwapped ? 1 - b : b)] =
            rgb.pixels[(i * 3 + c) * bytes + b];
      }
  return all;
}

// Without the last byte of luma that NV12 repeats in odd widths.
std::vector<uint8_t> planesOf(const Image& yuv, bool isNv12) {
  const size_t width = yuv.layout.width, height = yuv.layout.height, row = yuv.layout.row_bytes;
  std::vector<uint8_t> all;
  for (size_t y = 0; y < height; ++y)
    all.insert(all.end(), &yuv.pixels[y * row], &yuv.pixels[y * row] + width);
  const size_t chroma = (width + 1) / 2 * ((height + 1) / 2) * 2;
  const auto* const from = yuv.pixels.data() + row * height;
  // Both have chroma rows without padding here: that of I420 is (row + 1) / 2.
  EXPECT_EQ(yuv.layout.bytes, row * height + chroma) << isNv12;
  all.insert(all.end(), from, from + chroma);
  return all;
}

}  // namespace

size_t NamedFormat::row(size_t width) const {
  if (packing == VISTREL_PACKING_BYTES) return width;
  if (packing == VISTREL_PACKING_LITTLE || packing == VISTREL_PACKING_BIG) return 2 * width;
  if (packing == VISTREL_PACKING_GIGE) return width / 2 * 3 + width % 2 * 2;
  return (width * bits + 7) / 8;
}

size_t NamedFormat::stride(size_t width) const { return (row(width) + 3) / 4 * 4; }

NamedFormat namedFormat(const std::string& name) {
  const size_t digits = name.find_first_of("0123456789");
  const uint32_t bits =
      digits == name.npos ? 8 : static_cast<uint32_t>(std::stoul(name.substr(digits)));
  return {phaseOf(name), bits, packingOf(name, bits)};
}

vistrel_frame frameOf(const NamedFormat& format, uint32_t width, uint32_t height,
                      const std::vector<uint8_t>& bytes, size_t stride) {
  vistrel_frame frame =
      vistrel::frameOf(bytes, width, height, format.packing, format.bits, format.phase);
  frame.stride = stride;
  return frame;
}

std::vector<uint8_t> visibleBytes(GstBuffer* buffer, const GstVideoInfo& info) {
  GstVideoFrame frame{};
  std::vector<uint8_t> all;
  if (!gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ)) return all;
  for (guint p = 0; p < GST_VIDEO_FRAME_N_PLANES(&frame); ++p) {
    const auto* row = static_cast<const uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, p));
    const int bytes =
        GST_VIDEO_FRAME_COMP_WIDTH(&frame, p) * GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, p);
    for (int y = 0; y < GST_VIDEO_FRAME_COMP_HEIGHT(&frame, p); ++y) {
      all.insert(all.end(), row, row + bytes);
      row += GST_VIDEO_FRAME_PLANE_STRIDE(&frame, p);
    }
  }
  gst_video_frame_unmap(&frame);
  return all;
}

std::vector<uint8_t> expectedBytes(const vistrel_frame& frame, vistrel_conversion conversion,
                                   const GstVideoInfo& info) {
  const GstVideoFormat format = GST_VIDEO_INFO_FORMAT(&info);
  const bool isMono = frame.phase == VISTREL_MONO;
  // 16 significant bits, from any frame.
  const vistrel_finish plain = finishOf({});
  const bool isDeep = info.finfo->depth[0] == 16;
  if (isDeep && !conversion.finish) conversion.finish = &plain;
  if (GST_VIDEO_INFO_IS_GRAY(&info)) {
    const uint32_t code = isDeep ? (isMono ? VISTREL_MONO16 : VISTREL_GRAY16)
                                 : (isMono ? VISTREL_MONO8 : VISTREL_GRAY8);
    const Image image = imageOf(frame, conversion, code);
    return {image.pixels.begin(), image.pixels.end()};
  }
  if (GST_VIDEO_INFO_IS_YUV(&info)) {
    const bool isNv12 = format == GST_VIDEO_FORMAT_NV12;
    return planesOf(imageOf(frame, conversion, isNv12 ? VISTREL_NV12 : VISTREL_I420), isNv12);
  }
  return reordered(imageOf(frame, conversion, isDeep ? VISTREL_RGB48 : VISTREL_RGB24), *info.finfo);
}

}  // namespace vistrel::test
