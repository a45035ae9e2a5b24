#include "gstreamer/picture_buffer.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "tests/gstreamer/expected.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

using gstreamer::PictureBuffer;

// A buffer whose planes lie as a caller wants, full of 0xA5.
struct Picture {
  Picture(GstVideoFormat format, guint width, guint height, std::vector<gsize> offsets,
          std::vector<gint> strides, size_t bytes)
      : buffer(bufferOf(Bytes(bytes, 0xA5))) {
    gst_video_info_set_format(&info, format, width, height);
    const auto planes = static_cast<guint>(offsets.size());
    offsets.resize(GST_VIDEO_MAX_PLANES);
    strides.resize(GST_VIDEO_MAX_PLANES);
    gst_buffer_add_video_meta_full(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE, format, width, height,
                                   planes, offsets.data(), strides.data());
  }
  Buffer buffer;
  GstVideoInfo info;
};

// A frame of 6x4 in noise.
const Bytes kSmallFrame = noise(24, 3);
vistrel_frame smallFrame() { return vistrel::frameOf(kSmallFrame, 6, 4, VISTREL_GRBG); }

// Returns how many bytes of scratch memory it took.
size_t fill(Picture& picture, uint32_t format) {
  vistrel_conversion conversion = defaultConversion(smallFrame());
  conversion.format = format;
  const vistrel_finish plain = finishOf({});
  if (format == VISTREL_RGB48) conversion.finish = &plain;
  const vistrel_layout layout = layoutOf(smallFrame(), conversion);
  vistrel::Bytes scratch;
  PictureBuffer(picture.buffer.get(), picture.info)
      .fill(layout, scratch, [&](const vistrel_image& image) {
        vistrel_error error;
        const vistrel_frame f = smallFrame();
        if (vistrel_convert(&f, &conversion, &image, &error)) throw Error(error);
      });
  EXPECT_EQ(visibleBytes(picture.buffer.get(), picture.info),
            expectedBytes(smallFrame(), defaultConversion(smallFrame()), picture.info));
  return scratch.size();
}

TEST(PictureBuffer, WritesRowsAtAnyStrideAndNothingBetween) {
  Picture picture(GST_VIDEO_FORMAT_RGB, 6, 4, {5}, {21}, 5 + 4 * 21);
  EXPECT_EQ(fill(picture, VISTREL_RGB24), 0u);
  const Bytes bytes = bytesOf(picture.buffer.get());
  for (const size_t i : {0u, 4u, 5u + 18u, 5u + 20u, 5u + 3u * 21u + 20u})
    EXPECT_EQ(bytes[i], 0xA5);
}

TEST(PictureBuffer, WidensRowsAtAnyStride) {
  Picture picture(GST_VIDEO_FORMAT_BGRA64_BE, 6, 4, {2}, {50}, 2 + 4 * 50);
  EXPECT_EQ(fill(picture, VISTREL_RGB48), 0u);
}

TEST(PictureBuffer, WritesPlanesInOnePieceInPlace) {
  Picture nv12(GST_VIDEO_FORMAT_NV12, 6, 4, {0, 40}, {10, 10}, 60);
  EXPECT_EQ(fill(nv12, VISTREL_NV12), 0u);
  Picture i420(GST_VIDEO_FORMAT_I420, 6, 4, {0, 40, 50}, {10, 5, 5}, 60);
  EXPECT_EQ(fill(i420, VISTREL_I420), 0u);
}

TEST(PictureBuffer, CopiesOtherPlanes) {
  Picture nv12(GST_VIDEO_FORMAT_NV12, 6, 4, {0, 44}, {10, 12}, 80);
  EXPECT_EQ(fill(nv12, VISTREL_NV12), 36u);
  Picture i420(GST_VIDEO_FORMAT_I420, 6, 4, {20, 0, 10}, {10, 4, 4}, 80);
  EXPECT_EQ(fill(i420, VISTREL_I420), 36u);
}

std::string rejectionOf(const Picture& picture) {
  try {
    PictureBuffer buffer(picture.buffer.get(), picture.info);
    return "";
  } catch (const app::ProgramError& error) {
    return error.what();
  }
}

TEST(PictureBuffer, RejectsPlanesThatDoNotFit) {
  const auto kRgb = GST_VIDEO_FORMAT_RGB;
  EXPECT_EQ(rejectionOf({kRgb, 6, 4, {0}, {17}, 96}),
            "the picture's stride is 17; a row has 18 bytes");
  EXPECT_EQ(rejectionOf({kRgb, 6, 4, {0}, {-20}, 96}),
            "the picture's stride is -20; a row has 18 bytes");
  EXPECT_EQ(rejectionOf({kRgb, 6, 4, {1}, {20}, 78}),
            "the picture's buffer ends before its last row");
  EXPECT_EQ(rejectionOf({kRgb, 6, 4, {0}, {20}, 78}), "");
  EXPECT_EQ(rejectionOf({GST_VIDEO_FORMAT_I420, 6, 4, {0, 24, 30}, {6, 3, 2}, 40}),
            "the picture's stride is 2; a row has 3 bytes");
  EXPECT_EQ(rejectionOf({GST_VIDEO_FORMAT_NV12, 6, 4, {0, 25}, {6, 6}, 36}),
            "the picture's buffer ends before its last row");
  Picture other(kRgb, 6, 4, {0}, {20}, 80);
  gst_video_info_set_format(&other.info, kRgb, 4, 4);
  EXPECT_EQ(rejectionOf(other), "the picture's buffer is not one for 4x4 RGB");
}

}  // namespace
}  // namespace vistrel::test
