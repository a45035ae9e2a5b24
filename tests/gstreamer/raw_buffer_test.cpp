#include "gstreamer/raw_buffer.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

using gstreamer::RawBuffer;
using gstreamer::RawStream;

Buffer bufferOfSize(size_t bytes) {
  return Buffer(gst_buffer_new_allocate(nullptr, bytes, nullptr));
}

RawStream streamOf(const char* format, uint32_t width, uint32_t height) {
  return {*gstreamer::findRawFormat(format), width, height, 0};
}

void addMeta(const Buffer& buffer, guint width, guint height, gsize offset, gint stride) {
  gsize offsets[GST_VIDEO_MAX_PLANES] = {offset};
  gint strides[GST_VIDEO_MAX_PLANES] = {stride};
  gst_buffer_add_video_meta_full(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_ENCODED,
                                 width, height, 1, offsets, strides);
}

void addCrop(const Buffer& buffer, guint x, guint y, guint width, guint height) {
  GstVideoCropMeta* const crop = gst_buffer_add_video_crop_meta(buffer.get());
  crop->x = x, crop->y = y, crop->width = width, crop->height = height;
}

TEST(RawBuffer, RoundsRowsUpTo4Bytes) {
  EXPECT_EQ(gstreamer::usualStride(streamOf("rggb", 5, 4)), 8u);
  EXPECT_EQ(gstreamer::usualStride(streamOf("rggb", 8, 4)), 8u);
  EXPECT_EQ(gstreamer::usualStride(streamOf("rggb16le", 5, 4)), 12u);
  EXPECT_EQ(gstreamer::usualStride(streamOf("BayerRG12p", 5, 4)), 8u);  // 60 bits
  EXPECT_EQ(gstreamer::usualStride(streamOf("BayerRG12p", 6, 4)), 12u);
}

TEST(RawBuffer, TakesTheStrideFromTheMetaOrTheUserOrTheSize) {
  const RawStream stream = streamOf("rggb", 5, 4);
  const Buffer rounded = bufferOfSize(32), tight = bufferOfSize(20), described = bufferOfSize(64);
  EXPECT_EQ(RawBuffer(rounded.get(), stream, 0).frame().stride, 8u);
  EXPECT_EQ(RawBuffer(tight.get(), stream, 0).frame().stride, 5u);
  EXPECT_EQ(RawBuffer(rounded.get(), stream, 7).frame().stride, 7u);
  addMeta(described, 5, 4, 3, 12);
  const RawBuffer raw(described.get(), stream, 7);
  EXPECT_EQ(raw.frame().stride, 12u);
  EXPECT_EQ(raw.frame().size, 61u);
}

TEST(RawBuffer, TakesThePartThatACropMetaLeaves) {
  const Buffer buffer = bufferOfSize(16 * 12);
  addMeta(buffer, 16, 12, 0, 16);
  addCrop(buffer, 3, 5, 8, 6);
  const RawBuffer raw(buffer.get(), streamOf("rggb", 8, 6), 0);
  EXPECT_EQ(raw.frame().width, 16u);
  EXPECT_EQ(raw.frame().height, 12u);
  EXPECT_EQ(raw.visible().x, 3u);
  EXPECT_EQ(raw.visible().y, 5u);
  EXPECT_EQ(raw.visible().width, 8u);
  EXPECT_EQ(raw.visible().height, 6u);
}

std::string rejectionOf(const Buffer& buffer, const RawStream& stream) {
  try {
    RawBuffer raw(buffer.get(), stream, 0);
    return "";
  } catch (const app::ProgramError& error) {
    return error.what();
  }
}

TEST(RawBuffer, RejectsMetasThatDoNotFit) {
  const RawStream stream = streamOf("rggb16le", 8, 4);
  const Buffer narrow = bufferOfSize(64), below = bufferOfSize(64), late = bufferOfSize(64),
               otherSize = bufferOfSize(64), beyond = bufferOfSize(512);
  addMeta(narrow, 8, 4, 0, 15);
  EXPECT_EQ(rejectionOf(narrow, stream), "the buffer's stride is 15; a row has 16 bytes");
  addMeta(below, 8, 4, 0, -16);
  EXPECT_EQ(rejectionOf(below, stream), "the buffer's stride is -16; a row has 16 bytes");
  addMeta(late, 8, 4, 65, 16);
  EXPECT_EQ(rejectionOf(late, stream), "the buffer begins at byte 65, but has 64");
  addCrop(otherSize, 0, 0, 4, 4);
  EXPECT_EQ(rejectionOf(otherSize, stream), "the buffer's crop is 4x4; the caps are 8x4");
  addMeta(beyond, 16, 8, 0, 32);
  addCrop(beyond, 9, 0, 8, 4);
  EXPECT_EQ(rejectionOf(beyond, stream),
            "the buffer's crop 8x4+9+0 extends beyond its 16x8 pixels");
}

TEST(RawBuffer, HasTheBitsOfMonoFramesAlone) {
  RawStream stream = streamOf("GRAY16_LE", 4, 4);
  stream.bits = 12;
  EXPECT_EQ(gstreamer::frameOf(stream).bits, 12u);
  stream.format = *gstreamer::findRawFormat("rggb16le");
  EXPECT_EQ(gstreamer::frameOf(stream).bits, 16u);
}

}  // namespace
}  // namespace vistrel::test
