// What the element says about settings that don't fit: errors with the reason, and warnings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string pipelineWith(const std::string& settings, const std::string& size) {
  return "videotestsrc num-buffers=2 ! video/x-bayer,format=rggb," + size + " ! vistreldemosaic " +
         settings + " ! fakesink";
}

TEST(Notices, SayWhyFramesAndShapesDoNotFit) {
  const std::string size = "width=64,height=64";
  EXPECT_THAT(errorOf(pipelineWith("region=32x32+40+40", size)),
              HasSubstr("it extends beyond the frame of 64x64"));
  EXPECT_THAT(errorOf(pipelineWith("region=100x10+0+0", size)),
              HasSubstr("it extends beyond the frame of 64x64"));
  EXPECT_THAT(errorOf(pipelineWith("region=4x3+0+0 binning=4", size)), HasSubstr("4x3"));
  EXPECT_THAT(errorOf(pipelineWith("binning=4", "width=3,height=64")), HasSubstr("3x64"));
  EXPECT_EQ(errorOf(pipelineWith("region=32x32+32+32", size)), "");
}

TEST(Notices, NamePropertiesRatherThanArguments) {
  const std::string size = "width=64,height=64";
  EXPECT_EQ(errorOf(pipelineWith("curve=2", size)),
            "window, curve, table: it needs 10 bits or more; the samples have 8");
  EXPECT_EQ(errorOf(pipelineWith("region=10x10+60+60", size)),
            "region 10x10+60+60: it extends beyond the frame of 64x64");
}

TEST(Notices, SourcesTakeASizeThatHasTheRegion) {
  EXPECT_EQ(errorOf(pipelineWith("region=32x32+900+700", "framerate=5/1")), "");
}

// Sources try again.
TEST(Notices, SayOnceWhatIsWrong) {
  const std::string frames = "video/x-bayer,format=rggb,width=64,height=64,framerate=25/1";
  for (const auto& [property, value] : {std::pair{"region", "100x10+0+0"},
                                        {"region", "nonsense"},
                                        {"curve", "2"},
                                        {"look", "nonsense"}}) {
    Harness h;
    h.set(property, value);
    h.pictures("video/x-raw,format=RGB");
    for (int i = 0; i < 3; ++i) {
      h.frames(frames);
      EXPECT_NE(h.push(Bytes(4096)), GST_FLOW_OK);
      EXPECT_NE(h.push(Bytes(4096)), GST_FLOW_OK);
    }
    EXPECT_THAT(h.errors(), SizeIs(1)) << property << " " << value;
  }
}

TEST(Notices, RepeatAnErrorAfterAPicture) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames("video/x-bayer,format=rggb,width=32,height=32,framerate=25/1");
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(h.push(Bytes(1024)), GST_FLOW_OK);
    EXPECT_NE(h.push(Bytes(1023)), GST_FLOW_OK);
    EXPECT_NE(h.push(Bytes(1023)), GST_FLOW_OK);
    EXPECT_THAT(h.errors(), SizeIs(1));
  }
}

struct Case {
  std::vector<std::pair<const char*, const char*>> settings;
  const char* frames;
  const char* warning;
};

TEST(Notices, WarnOfSettingsWithoutEffect) {
  const char* const bayer = "video/x-bayer,format=rggb12le,width=32,height=32,framerate=25/1";
  const char* const mono = "video/x-raw,format=GRAY16_LE,width=32,height=32,framerate=25/1";
  const Case cases[] = {
      {{{"window", "1"}, {"curve", "4"}}, bayer, "window has no effect beside curve"},
      {{{"threshold", "5"}}, bayer, "threshold has no effect without method=edge"},
      {{{"bits", "10"}}, bayer, "bits has no effect on rggb12le, which has 12"},
      {{{"exposure", "2"}}, bayer, "exposure has no effect without look"},
      {{{"matrix", "1:0:0:0:1:0:0:0:1"}}, bayer, "matrix has no effect without look"},
      {{{"look", "exposure=2"}, {"exposure", "3"}},
       bayer,
       "the exposure of look has no effect beside the property exposure"},
      {{{"awb", "once"}, {"gains", "2:1:1"}}, bayer, "gains has no effect beside awb"},
      {{{"awb", "once"}}, mono, "awb has no effect on mono frames"},
  };
  for (const Case& c : cases) {
    Harness h;
    for (const auto& [property, value] : c.settings) h.set(property, value);
    h.pictures("video/x-raw");
    h.frames(c.frames);
    h.push(Bytes(2048));
    h.push(Bytes(2048));
    EXPECT_THAT(h.warnings(), ElementsAre(c.warning));
  }
}

TEST(Notices, FollowChangesAndAreNotRepeated) {
  Harness h;
  h.set("method", "edge");
  h.set("threshold", "5");
  h.pictures("video/x-raw");
  h.frames("video/x-bayer,format=rggb,width=32,height=32,framerate=25/1");
  ASSERT_EQ(h.push(Bytes(1024)), GST_FLOW_OK) << h.error();
  EXPECT_THAT(h.warnings(), IsEmpty());
  for (const char* threshold : {"6", "7", "8"}) {
    h.set("method", "bilinear");
    h.set("threshold", threshold);
    ASSERT_EQ(h.push(Bytes(1024)), GST_FLOW_OK) << h.error();
  }
  EXPECT_THAT(h.warnings(), ElementsAre("threshold has no effect without method=edge"));
}

}  // namespace
}  // namespace vistrel::test
