// Streams that change while they run.
#include <gst/controller/gstdirectcontrolbinding.h>
#include <gst/controller/gstinterpolationcontrolsource.h>
#include <gtest/gtest.h>

#include "tests/gstreamer/expected.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

const std::string kCaps = "video/x-bayer,format=grbg,width=32,height=24,framerate=25/1";
const Bytes kSamples = noise(32 * 24, 1);

vistrel_frame frame() { return vistrel::frameOf(kSamples, 32, 24, VISTREL_GRBG); }

void expectPicture(Harness& h, const vistrel_conversion& conversion) {
  ASSERT_EQ(h.push(kSamples), GST_FLOW_OK) << h.error();
  const Buffer picture = h.pull();
  ASSERT_TRUE(picture);
  EXPECT_EQ(visibleBytes(picture.get(), h.info()), expectedBytes(frame(), conversion, h.info()));
}

TEST(Changes, OfBinningAndRegionNegotiateAnew) {
  Harness h;
  h.pictures("video/x-raw,format=BGRx");
  h.frames(kCaps);
  vistrel_conversion conversion = defaultConversion(frame());
  expectPicture(h, conversion);
  h.set("binning", "2");
  conversion.binning = 2;
  expectPicture(h, conversion);
  EXPECT_EQ(h.info().width, 16);
  h.set("region", "12x8+5+3");
  conversion.region = {5, 3, 12, 8};
  expectPicture(h, conversion);
  EXPECT_EQ(h.info().width, 6);
  h.set("region", "");
  h.set("binning", "1");
  expectPicture(h, defaultConversion(frame()));
  EXPECT_EQ(h.info().width, 32);
}

// The size of pictures stays, and so do their caps.
TEST(Changes, OfWhereARegionIsApplyToTheNextFrame) {
  Harness h;
  h.set("region", "12x8+5+3");
  h.pictures("video/x-raw,format=BGRx");
  h.frames(kCaps);
  vistrel_conversion conversion = defaultConversion(frame());
  conversion.region = {5, 3, 12, 8};
  expectPicture(h, conversion);
  h.set("region", "12x8+6+4");
  conversion.region = {6, 4, 12, 8};
  expectPicture(h, conversion);
}

TEST(Changes, OfOtherPropertiesApplyToTheNextFrame) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  vistrel_conversion conversion = defaultConversion(frame());
  expectPicture(h, conversion);
  h.set("method", "ahd");
  conversion.algorithm = VISTREL_AHD;
  expectPicture(h, conversion);
  h.set("gains", "1:1:2");
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  conversion.gains[0] = conversion.gains[1] = 4096, conversion.gains[2] = 8192;
  expectPicture(h, conversion);
}

// A setting that does not fit ends the stream until it is mended.
TEST(Changes, CanBeMended) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  expectPicture(h, defaultConversion(frame()));
  for (const auto& [property, value] : {std::pair{"region", "40x8+0+0"}, {"look", "?"}}) {
    h.set(property, value);
    EXPECT_NE(h.push(kSamples), GST_FLOW_OK) << property;
    EXPECT_NE(h.push(kSamples), GST_FLOW_OK) << property;
    EXPECT_NE(h.error(), "") << property;
    h.set(property, "");
    expectPicture(h, defaultConversion(frame()));
  }
}

TEST(Changes, OfCropMetasChangeThePhase) {
  Harness h;
  h.set("region", "10x8+3+2");  // within the crop
  h.pictures("video/x-raw,format=RGB");
  h.frames("video/x-bayer,format=grbg,width=16,height=12,framerate=25/1");
  for (const auto& [x, y] : {std::pair{0u, 0u}, {1u, 0u}, {0u, 1u}, {7u, 9u}, {16u, 12u}}) {
    GstBuffer* const buffer = bufferOf(kSamples);
    gsize offsets[GST_VIDEO_MAX_PLANES] = {};
    gint strides[GST_VIDEO_MAX_PLANES] = {32};
    gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_ENCODED, 32,
                                   24, 1, offsets, strides);
    GstVideoCropMeta* const crop = gst_buffer_add_video_crop_meta(buffer);
    crop->x = x, crop->y = y, crop->width = 16, crop->height = 12;
    ASSERT_EQ(gst_harness_push(h.get(), buffer), GST_FLOW_OK) << h.error();
    const Buffer picture = h.pull();
    vistrel_conversion conversion = defaultConversion(frame());
    conversion.region = {x + 3, y + 2, 10, 8};
    EXPECT_EQ(visibleBytes(picture.get(), h.info()), expectedBytes(frame(), conversion, h.info()));
    EXPECT_FALSE(gst_buffer_get_video_crop_meta(picture.get()));
  }
}

TEST(Changes, OfCapsChangePictures) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  expectPicture(h, defaultConversion(frame()));
  h.frames("video/x-raw,format=GRAY8,width=32,height=24,framerate=25/1");
  EXPECT_EQ(h.push(kSamples), GST_FLOW_NOT_NEGOTIATED);
  h.frames("video/x-bayer,format=grbg,width=16,height=48,framerate=25/1");
  ASSERT_EQ(h.push(kSamples), GST_FLOW_OK);
  EXPECT_TRUE(h.pull());
  EXPECT_EQ(h.info().height, 48);
  h.frames(kCaps);
  expectPicture(h, defaultConversion(frame()));
}

// Buffers of files, whose segments count bytes, and buffers without times.
TEST(Changes, NeedNoTimes) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  GstSegment bytes;
  gst_segment_init(&bytes, GST_FORMAT_BYTES);
  ASSERT_TRUE(gst_harness_push_event(h.get(), gst_event_new_segment(&bytes)));
  h.set("awb", "continuous");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(h.push(kSamples), GST_FLOW_OK);
}

TEST(Changes, KeepTimesFlagsAndFramerate) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  GstBuffer* const buffer = bufferOf(kSamples);
  GST_BUFFER_PTS(buffer) = 5 * GST_SECOND;
  GST_BUFFER_DURATION(buffer) = GST_SECOND / 25;
  ASSERT_EQ(gst_harness_push(h.get(), buffer), GST_FLOW_OK);
  const Buffer picture = h.pull();
  EXPECT_EQ(GST_BUFFER_PTS(picture.get()), 5 * GST_SECOND);
  EXPECT_EQ(GST_BUFFER_DURATION(picture.get()), GST_SECOND / 25);
  EXPECT_EQ(h.info().fps_n, 25);
}

TEST(Changes, AddNoLatency) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  gst_harness_set_upstream_latency(h.get(), 40 * GST_MSECOND);
  ASSERT_EQ(h.push(kSamples), GST_FLOW_OK);
  EXPECT_EQ(gst_harness_query_latency(h.get()), 40 * GST_MSECOND);
}

// A sink that is a second late wants no frame of before.
TEST(Changes, SkipFramesThatAreLate) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kCaps);
  const auto push = [&](GstClockTime time) {
    GstBuffer* const buffer = bufferOf(kSamples);
    GST_BUFFER_PTS(buffer) = time;
    EXPECT_EQ(gst_harness_push(h.get(), buffer), GST_FLOW_OK);
    return h.pull() != nullptr;
  };
  EXPECT_TRUE(push(GST_SECOND));
  ASSERT_TRUE(gst_harness_push_upstream_event(
      h.get(), gst_event_new_qos(GST_QOS_TYPE_UNDERFLOW, 1, GST_SECOND, GST_SECOND)));
  EXPECT_FALSE(push(GST_SECOND + GST_MSECOND));
  EXPECT_TRUE(push(5 * GST_SECOND));
}

TEST(Changes, OfControlledPropertiesFollowTheTime) {
  Harness h;
  h.set("look", "linear,black=0,white=255,gains=1:1:1");
  h.pictures("video/x-raw,format=GRAY8");
  h.frames("video/x-raw,format=GRAY8,width=2,height=2,framerate=25/1");
  GstControlSource* const source = gst_interpolation_control_source_new();
  g_object_set(source, "mode", GST_INTERPOLATION_MODE_LINEAR, nullptr);
  gst_timed_value_control_source_set(GST_TIMED_VALUE_CONTROL_SOURCE(source), 0, 1);
  gst_timed_value_control_source_set(GST_TIMED_VALUE_CONTROL_SOURCE(source), GST_SECOND, 2);
  gst_object_add_control_binding(
      GST_OBJECT(h.element()),
      gst_direct_control_binding_new_absolute(GST_OBJECT(h.element()), "exposure", source));
  gst_object_unref(source);
  for (const auto& [time, level] : {std::pair{0, 100}, {500, 150}, {1000, 200}}) {
    GstBuffer* const buffer = bufferOf(Bytes(8, 100));
    GST_BUFFER_PTS(buffer) = static_cast<GstClockTime>(time) * GST_MSECOND;
    ASSERT_EQ(gst_harness_push(h.get(), buffer), GST_FLOW_OK) << h.error();
    EXPECT_EQ(bytesOf(h.pull().get())[0], level) << time;
  }
}

TEST(Changes, ToFramesThatAreTooLargeAreRejected) {
  Harness h;
  h.pictures("video/x-raw,format=BGRx");
  for (const char* size : {"width=2147483647,height=2147483647", "width=2147483647,height=2",
                           "width=60000,height=60000"}) {
    h.frames("video/x-bayer,format=rggb16le,framerate=25/1," + std::string(size));
    EXPECT_NE(h.push(Bytes(100)), GST_FLOW_OK) << size;
    EXPECT_NE(h.error(), "") << size;
    h.frames(kCaps);
    expectPicture(h, defaultConversion(frame()));
  }
}

TEST(Changes, HoldOneStreamFromStartToStop) {
  std::vector<std::unique_ptr<Harness>> all(VISTREL_MAX_STREAMS);
  for (auto& h : all) h = std::make_unique<Harness>();
  GstElement* const one = gst_element_factory_make("vistreldemosaic", nullptr);
  EXPECT_EQ(gst_element_set_state(one, GST_STATE_PAUSED), GST_STATE_CHANGE_FAILURE);
  gst_element_set_state(one, GST_STATE_NULL);
  gst_element_set_state(all.back()->element(), GST_STATE_NULL);
  EXPECT_NE(gst_element_set_state(one, GST_STATE_PAUSED), GST_STATE_CHANGE_FAILURE);
  gst_element_set_state(one, GST_STATE_NULL);
  gst_object_unref(one);
}

}  // namespace
}  // namespace vistrel::test
