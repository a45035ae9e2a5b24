// GStreamer's own element for mosaics of 8 bits is bilinear too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "tests/gstreamer/expected.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

constexpr int kWidth = 64, kHeight = 48;

Bytes converted(GstHarness* harness, const std::string& phase, const Bytes& samples) {
  gst_harness_set_sink_caps_str(harness, "video/x-raw,format=BGRx");
  const std::string caps = "video/x-bayer,format=" + phase + ",width=" + std::to_string(kWidth) +
                           ",height=" + std::to_string(kHeight) + ",framerate=25/1";
  gst_harness_set_src_caps_str(harness, caps.c_str());
  EXPECT_EQ(gst_harness_push(harness, bufferOf(samples)), GST_FLOW_OK);
  const Buffer picture(gst_harness_try_pull(harness));
  return picture ? bytesOf(picture.get()) : Bytes();
}

// The largest difference of a channel within two pixels of the border.
int largestDifference(const Bytes& a, const Bytes& b, size_t channel) {
  int largest = 0;
  for (size_t y = 2; y < kHeight - 2; ++y)
    for (size_t x = 2; x < kWidth - 2; ++x) {
      const size_t i = (y * kWidth + x) * 4 + channel;
      largest = std::max(largest, std::abs(a[i] - b[i]));
    }
  return largest;
}

// A picture whose colours change by a level a column or row: smoothing leaves it as it is.
Bytes slopes() {
  Bytes samples;
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) samples.push_back(static_cast<uint8_t>(20 + x + 2 * y));
  return samples;
}

// Means of four that are made of means of two are up to 1 larger than means of four. libVistrel
// smooths green in addition, so green is the same only where that changes nothing.
TEST(Peer, MakesTheSamePictureWithinRounding) {
  GstElementFactory* const factory = gst_element_factory_find("bayer2rgb");
  if (!factory) GTEST_SKIP() << "bayer2rgb is not installed";
  gst_object_unref(factory);
  for (const char* phase : {"rggb", "bggr", "grbg", "gbrg"})
    for (const bool isNoise : {false, true}) {
      const Bytes samples = isNoise ? noise(kWidth * kHeight, 4) : slopes();
      Harness ours;
      GstHarness* const theirs = gst_harness_new("bayer2rgb");
      const Bytes a = converted(ours.get(), phase, samples), b = converted(theirs, phase, samples);
      gst_harness_teardown(theirs);
      ASSERT_EQ(a.size(), size_t{kWidth} * kHeight * 4);
      ASSERT_EQ(a.size(), b.size());
      EXPECT_LE(largestDifference(a, b, 0), 1) << phase << isNoise;
      EXPECT_LE(largestDifference(a, b, 1), isNoise ? 255 : 1) << phase;
      EXPECT_LE(largestDifference(a, b, 2), 1) << phase << isNoise;
    }
}

}  // namespace
}  // namespace vistrel::test
