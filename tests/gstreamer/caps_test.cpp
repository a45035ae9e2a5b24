#include "gstreamer/caps.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/gstreamer/harness.h"

namespace vistrel::gstreamer {
namespace {

using test::Caps;

Caps capsOf(const std::string& text) { return Caps(gst_caps_from_string(text.c_str())); }

// Whether these caps lead to those, and to no others of the same format.
void expectCaps(GstPadDirection direction, const std::string& from, const Shape& shape,
                const std::string& to) {
  const Caps caps = capsOf(from), expected = capsOf(to);
  const Caps all(transformedCaps(direction, caps.get(), shape));
  const char* const name = gst_structure_get_name(gst_caps_get_structure(expected.get(), 0));
  const char* const format =
      gst_structure_get_string(gst_caps_get_structure(expected.get(), 0), "format");
  const Caps only = capsOf(std::string(name) + ",format=" + format);
  const Caps found(gst_caps_intersect(all.get(), only.get()));
  gchar* const text = gst_caps_to_string(found.get());
  EXPECT_TRUE(gst_caps_is_strictly_equal(found.get(), expected.get())) << text << " is not " << to;
  g_free(text);
}

void expectPictures(const std::string& frames, const Shape& shape, const std::string& pictures) {
  expectCaps(GST_PAD_SINK, frames, shape, pictures);
}
void expectFrames(const std::string& pictures, const Shape& shape, const std::string& frames) {
  expectCaps(GST_PAD_SRC, pictures, shape, frames);
}

// Of other sizes, the converter says what is wrong.
const std::string kAnyFrames =
    "video/x-bayer,format=rggb,width=[1,2147483647],height=[1,2147483647]";

const std::string kFrames = "video/x-bayer,format=rggb,width=11,height=9";

TEST(Caps, PassSizesAndOtherFields) {
  expectPictures(kFrames + ",framerate=30/1,pixel-aspect-ratio=2/1", {},
                 "video/x-raw,format=BGRx,width=11,height=9,framerate=30/1,pixel-aspect-ratio=2/1");
  expectFrames("video/x-raw,format=RGB,width=11,height=9,framerate=30/1", {},
               "video/x-bayer,format=BayerRG12p,width=11,height=9,framerate=30/1");
}

TEST(Caps, AreDividedByBinning) {
  expectPictures(kFrames, {{}, 2}, "video/x-raw,format=RGB,width=5,height=4");
  expectPictures("video/x-bayer,format=rggb,width=[1,11],height=[8,9]", {{}, 4},
                 "video/x-raw,format=RGB,width=[1,2],height=2");
  expectFrames("video/x-raw,format=RGB,width=5,height=4", {{}, 2},
               "video/x-bayer,format=rggb,width=[10,11],height=[8,9];" + kAnyFrames);
}

TEST(Caps, HaveTheSizeOfARegion) {
  const Shape shape{{3, 1, 6, 4}, 2};
  expectPictures(kFrames, shape, "video/x-raw,format=RGB,width=3,height=2");
  expectFrames(
      "video/x-raw,format=RGB,width=3,height=2", shape,
      "video/x-bayer,format=rggb,width=[9,2147483647],height=[5,2147483647];" + kAnyFrames);
  const Caps other = capsOf("video/x-raw,format=RGB,width=4,height=2");
  const Caps none(transformedCaps(GST_PAD_SRC, other.get(), shape));
  EXPECT_TRUE(gst_caps_is_empty(none.get()));
}

// The converter says why there are no pictures of such frames.
TEST(Caps, OfSmallFramesAreThoseOfAPixel) {
  expectPictures("video/x-bayer,format=rggb,width=3,height=9", {{}, 4},
                 "video/x-raw,format=RGB,width=1,height=2");
}

TEST(Caps, PassColorimetry) {
  expectPictures(kFrames + ",colorimetry=bt2020", {},
                 "video/x-raw,format=RGB,width=11,height=9,colorimetry=1:1:11:7");
  expectPictures(kFrames + ",colorimetry=bt2020", {},
                 "video/x-raw,format=NV12,width=11,height=9,colorimetry=2:3:11:7,chroma-site=jpeg");
  expectPictures(kFrames, {},
                 "video/x-raw,format=I420,width=11,height=9,colorimetry=bt709,chroma-site=jpeg");
}

// Luma of BT.601 in full range.
TEST(Caps, OfAMosaicInGrayNameItsLuma) {
  expectPictures(kFrames + ",colorimetry=bt2020", {},
                 "video/x-raw,format=GRAY8,width=11,height=9,colorimetry=1:4:11:7");
  expectPictures(kFrames, {}, "video/x-raw,format=GRAY8,width=11,height=9");
}

TEST(Caps, PassTheColorimetryOfMonoFrames) {
  for (const std::string rest : {",colorimetry=bt709", ",colorimetry=1:4:16:4", ""}) {
    const std::string size = ",width=8,height=8,framerate=30/1" + rest;
    expectPictures("video/x-raw,format=GRAY8" + size, {}, "video/x-raw,format=GRAY8" + size);
    expectPictures("video/x-raw,format=GRAY16_BE" + size, {},
                   "video/x-raw,format=GRAY16_LE" + size);
    expectFrames("video/x-raw,format=GRAY8" + size, {}, "video/x-raw,format=GRAY16_BE" + size);
  }
}

TEST(Caps, OfMonoFramesAreGray) {
  const std::string mono = "video/x-raw,format=GRAY16_BE,width=8,height=8";
  expectPictures(mono, {}, "video/x-raw,format=GRAY8,width=8,height=8");
  const Caps caps = capsOf(mono);
  const Caps pictures(transformedCaps(GST_PAD_SINK, caps.get(), {}));
  const Caps colours = capsOf("video/x-raw,format={RGB,BGRx,NV12,ARGB64}");
  EXPECT_FALSE(gst_caps_can_intersect(pictures.get(), colours.get()));
  expectFrames("video/x-raw,format=GRAY8,width=8,height=8", {},
               "video/x-raw,format=GRAY16_BE,width=8,height=8");
  const Caps rgb = capsOf("video/x-raw,format=RGB,width=8,height=8");
  const Caps frames(transformedCaps(GST_PAD_SRC, rgb.get(), {}));
  EXPECT_FALSE(gst_caps_can_intersect(frames.get(), caps.get()));
}

}  // namespace
}  // namespace vistrel::gstreamer
