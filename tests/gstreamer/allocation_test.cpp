#include "gstreamer/allocation.h"

#include <gtest/gtest.h>

#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

TEST(Allocation, KnowsTheBytesOfBuffers) {
  const Caps frames(gst_caps_from_string("video/x-bayer,format=BayerRG12p,width=6,height=4"));
  EXPECT_EQ(gstreamer::frameBytes(frames.get()), 48u);
  const Caps pictures(gst_caps_from_string("video/x-raw,format=RGB,width=5,height=4"));
  EXPECT_EQ(gstreamer::pictureBytes(pictures.get()), 64u);
  const Caps any(gst_caps_from_string("video/x-bayer"));
  EXPECT_EQ(gstreamer::frameBytes(any.get()), 0u);
  EXPECT_EQ(gstreamer::pictureBytes(any.get()), 0u);
}

// What the element answers to those who send frames.
TEST(Allocation, OffersAPoolAndMetas) {
  Harness h;
  h.pictures("video/x-raw,format=BGRx");
  h.frames("video/x-bayer,format=rggb,width=33,height=4,framerate=25/1");
  const Caps caps(gst_pad_get_current_caps(h.get()->srcpad));
  GstQuery* const query = gst_query_new_allocation(caps.get(), TRUE);
  ASSERT_TRUE(gst_pad_peer_query(h.get()->srcpad, query));
  EXPECT_TRUE(gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr));
  EXPECT_TRUE(gst_query_find_allocation_meta(query, GST_VIDEO_CROP_META_API_TYPE, nullptr));
  GstBufferPool* pool = nullptr;
  guint size = 0;
  ASSERT_EQ(gst_query_get_n_allocation_pools(query), 1u);
  gst_query_parse_nth_allocation_pool(query, 0, &pool, &size, nullptr, nullptr);
  EXPECT_EQ(size, 36u * 4u);
  gst_buffer_pool_set_active(pool, TRUE);
  GstBuffer* buffer = nullptr;
  ASSERT_EQ(gst_buffer_pool_acquire_buffer(pool, &buffer, nullptr), GST_FLOW_OK);
  EXPECT_EQ(gst_harness_push(h.get(), buffer), GST_FLOW_OK);
  gst_buffer_pool_set_active(pool, FALSE);
  gst_object_unref(pool);
  gst_query_unref(query);
}

// A picture's memory comes back when the sink is done with it.
TEST(Allocation, ReusesPictures) {
  Harness h;
  h.pictures("video/x-raw,format=BGRx");
  h.frames("video/x-bayer,format=rggb,width=32,height=32,framerate=25/1");
  const auto memory = [&] {
    EXPECT_EQ(h.push(Bytes(1024)), GST_FLOW_OK);
    return static_cast<const void*>(gst_buffer_peek_memory(h.pull().get(), 0));
  };
  const void* const first = memory();
  for (int i = 0; i < 4; ++i) EXPECT_EQ(memory(), first);
}

}  // namespace
}  // namespace vistrel::test
