#include "gstreamer/formats.h"

#include <gtest/gtest.h>

#include "vistrel/vistrel_host.h"

namespace vistrel::gstreamer {
namespace {

TEST(Formats, HaveOneName) {
  const RawFormat* const packed = findRawFormat("BayerGB10p");
  ASSERT_TRUE(packed);
  EXPECT_EQ(packed->phase, VISTREL_GBRG);
  EXPECT_EQ(packed->bits, 10u);
  EXPECT_EQ(packed->packing, VISTREL_PACKING_PFNC);
  EXPECT_TRUE(findRawFormat("rggb"));
  EXPECT_TRUE(findRawFormat("GRAY16_BE"));
  EXPECT_FALSE(findRawFormat("BayerRG8"));  // rggb
  EXPECT_FALSE(findRawFormat("Mono12p"));
  EXPECT_FALSE(findRawFormat(""));
}

TEST(Formats, OfPicturesAreThoseOfGstreamer) {
  for (const PictureFormat& format : pictureFormats()) {
    ASSERT_NE(format.video, GST_VIDEO_FORMAT_UNKNOWN);
    const GstVideoFormatInfo* const info = gst_video_format_get_info(format.video);
    EXPECT_EQ(isYuv(format), GST_VIDEO_FORMAT_INFO_IS_YUV(info) != 0) << info->name;
    EXPECT_EQ(isWidened(format), GST_VIDEO_FORMAT_INFO_PSTRIDE(info, 0) == 8) << info->name;
    EXPECT_EQ(format.mono != kNoFormat, GST_VIDEO_FORMAT_INFO_IS_GRAY(info) != 0) << info->name;
    EXPECT_EQ(findPictureFormat(format.video), &format) << info->name;
  }
  EXPECT_FALSE(findPictureFormat(GST_VIDEO_FORMAT_YUY2));
}

}  // namespace
}  // namespace vistrel::gstreamer
