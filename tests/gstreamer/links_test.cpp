// Pipelines whose caps filters say what the properties make of sizes and colorimetry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

using ::testing::HasSubstr;

constexpr const char* kFrames = "video/x-bayer,format=rggb,width=64,height=48,framerate=25/1";

std::string filtered(const std::string& settings, const std::string& pictures) {
  return std::string("videotestsrc num-buffers=2 ! ") + kFrames + " ! vistreldemosaic " + settings +
         " ! video/x-raw," + pictures + " ! fakesink";
}

TEST(Links, TakeTheSizesThatPropertiesMake) {
  EXPECT_EQ(errorOf(filtered("binning=2", "width=32,height=24")), "");
  EXPECT_EQ(errorOf(filtered("region=20x10+3+5", "width=20,height=10")), "");
  EXPECT_EQ(errorOf(filtered("region=20x10+3+5 binning=2", "format=RGB,width=10,height=5")), "");
  EXPECT_EQ(errorOf("videotestsrc num-buffers=2 ! vistreldemosaic binning=4 ! "
                    "video/x-raw,format=RGB,width=16,height=12 ! fakesink"),
            "");
}

// Mono frames of the pictures' size would do for the caps filter, but not for binning.
TEST(Links, AskForFramesOfTheRightSize) {
  for (const char* format : {"", ",format=GRAY8", ",format=RGB"})
    EXPECT_EQ(errorOf("videotestsrc num-buffers=2 ! vistreldemosaic binning=4 ! video/x-raw,"
                      "width=16,height=12" +
                      std::string(format) + " ! fakesink"),
              "");
}

TEST(Links, RejectOtherSizes) {
  EXPECT_NE(errorOf(filtered("binning=2", "width=64,height=48")), "");
  EXPECT_NE(errorOf(filtered("", "width=32,height=24")), "");
}

// Elements link, so that this one can say it.
TEST(Links, LeaveItToTheElementToRejectProperties) {
  EXPECT_THAT(errorOf(filtered("region=nonsense", "width=20,height=10")),
              HasSubstr("region nonsense"));
}

// A camera of mono frames may say that they are of limited range.
TEST(Links, PassTheColorimetryOfMonoFrames) {
  const auto mono = [](const std::string& in, const std::string& out) {
    const std::string size = ",width=8,height=8,framerate=25/1,colorimetry=";
    return "videotestsrc num-buffers=2 ! video/x-raw,format=GRAY8" + size + in +
           " ! vistreldemosaic ! video/x-raw,format=GRAY8" + size + out + " ! fakesink";
  };
  EXPECT_EQ(errorOf(mono("bt709", "bt709")), "");
  EXPECT_EQ(errorOf(mono("1:4:0:0", "1:4:0:0")), "");
  EXPECT_NE(errorOf(mono("bt709", "1:4:0:0")), "");
}

int widthOf(GstElement* element) {
  GstPad* const pad = gst_element_get_static_pad(element, "src");
  const Caps caps(gst_pad_query_caps(pad, nullptr));
  gst_object_unref(pad);
  int width = 0;
  gst_structure_get_int(gst_caps_get_structure(caps.get(), 0), "width", &width);
  return width;
}

TEST(Links, KnowThePropertiesInEveryState) {
  Harness h;
  h.frames(kFrames);
  for (const GstState state :
       {GST_STATE_NULL, GST_STATE_READY, GST_STATE_PAUSED, GST_STATE_PLAYING}) {
    gst_element_set_state(h.element(), state);
    h.set("binning", "4");
    EXPECT_EQ(widthOf(h.element()), 16) << state;
    h.set("binning", "2");
    EXPECT_EQ(widthOf(h.element()), 32) << state;
  }
}

GstBusSyncReply changeBinning(GstBus*, GstMessage*, gpointer harness) {
  static_cast<Harness*>(harness)->set("binning", "4");
  return GST_BUS_PASS;
}

// A picture has the settings of the moment when its frame came, even if a property changes before
// caps are negotiated for it: here when the element warns of threshold.
TEST(Links, StayRightWhilePropertiesChange) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(kFrames);
  GstBus* const bus = gst_element_get_bus(h.element());
  gst_bus_set_sync_handler(bus, changeBinning, &h, nullptr);
  h.set("binning", "2");
  h.set("threshold", "5");
  for (const int binning : {2, 4}) {
    ASSERT_EQ(h.push(Bytes(64 * 48)), GST_FLOW_OK) << h.error();
    EXPECT_TRUE(h.pull());
    EXPECT_EQ(h.info().width, 64 / binning);
  }
  gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
  gst_object_unref(bus);
}

}  // namespace
}  // namespace vistrel::test
