// Turned and mirrored images, by hand.
#include <gmock/gmock.h>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

//   1 2 3
//   4 5 6
const std::vector<uint8_t> kSamples{1, 2, 3, 4, 5, 6};

Image turned(uint32_t orientation) {
  const vistrel_frame frame = frameOf(kSamples, 3, 2, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.orientation = orientation;
  return convert(frame, c);
}

TEST(Turned, FollowsTheCodesOfTiff) {
  EXPECT_THAT(turned(0).pixels, ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(turned(VISTREL_UPRIGHT).pixels, ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(turned(VISTREL_MIRRORED).pixels, ElementsAre(3, 2, 1, 6, 5, 4));
  EXPECT_THAT(turned(VISTREL_TURNED_180).pixels, ElementsAre(6, 5, 4, 3, 2, 1));
  EXPECT_THAT(turned(VISTREL_FLIPPED).pixels, ElementsAre(4, 5, 6, 1, 2, 3));
  EXPECT_THAT(turned(VISTREL_TRANSPOSED).pixels, ElementsAre(1, 4, 2, 5, 3, 6));
  EXPECT_THAT(turned(VISTREL_TURNED_90).pixels, ElementsAre(4, 1, 5, 2, 6, 3));
  EXPECT_THAT(turned(VISTREL_TRANSVERSE).pixels, ElementsAre(6, 3, 5, 2, 4, 1));
  EXPECT_THAT(turned(VISTREL_TURNED_270).pixels, ElementsAre(3, 6, 2, 5, 1, 4));
}

TEST(Turned, ExchangesTheSidesOfTheLayout) {
  const Image image = turned(VISTREL_TURNED_270);
  EXPECT_EQ(image.layout.width, 2u);
  EXPECT_EQ(image.layout.height, 3u);
  EXPECT_EQ(image.layout.row_bytes, 2u);
  EXPECT_GE(image.layout.working_bytes, 6u);
}

TEST(Turned, IsMadeAsAWhole) {
  const vistrel_frame frame = frameOf(kSamples, 3, 2, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.orientation = VISTREL_FLIPPED;
  std::vector<uint8_t> pixels(6);
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const Stream stream = Stream::acquire();
  vistrel_error error{};
  vistrel_stream_begin(stream.handle(), &frame, &c, &image, &error);
  expectError(error, {VISTREL_BAD_ORIENTATION, "conversion.orientation", "4",
                      "it needs the whole frame at once"});
  vistrel_convert_rows(stream.handle(), &frame, &c, &image, 0, 1, &error);
  expectError(error, {VISTREL_BAD_ORIENTATION, "conversion.orientation", "4",
                      "a turned or mirrored image is made as a whole"});
}

}  // namespace
}  // namespace vistrel
