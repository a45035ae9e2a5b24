// The bytes of a Y4M.
#include <gtest/gtest.h>

#include "apps/pictures/picture.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

using namespace app;

std::string film(const Image& image, const FrameRate& rate) {
  const Scratch scratch;
  AtomicFile file(scratch / "a.y4m");
  beginY4m(image.layout, rate, file);
  writeY4m(image, {}, file);
  writeY4m(image, {}, file);
  file.commit();
  return scratch.read("a.y4m");
}

Image imageOf(uint32_t channels, size_t bytes) {
  Image image;
  image.layout = {2, 2, channels, 8, 2, bytes, 0, 0, {}};
  for (size_t i = 0; i < bytes; ++i) image.pixels.push_back(static_cast<uint8_t>('a' + i));
  return image;
}

TEST(Y4m, HasPlanesAsTheyAre) {
  EXPECT_EQ(film(imageOf(3, 6), {30000, 1001}),
            "YUV4MPEG2 W2 H2 F30000:1001 Ip A1:1 C420jpeg XCOLORRANGE=LIMITED\n"
            "FRAME\nabcdefFRAME\nabcdef");
  EXPECT_EQ(film(imageOf(3, 12), {}),
            "YUV4MPEG2 W2 H2 F25:1 Ip A1:1 C444 XCOLORRANGE=LIMITED\n"
            "FRAME\nabcdefghijklFRAME\nabcdefghijkl");
}

// Luma is 16 + 219 * gray / 255: 16, 59.8, 191.2, 235.
TEST(Y4m, HasGrayInLimitedRange) {
  Image image = imageOf(1, 4);
  image.pixels = {0, 51, 204, 255};
  const std::string planes = {16, 60, static_cast<char>(191), static_cast<char>(235)};
  EXPECT_EQ(film(image, {}), "YUV4MPEG2 W2 H2 F25:1 Ip A1:1 Cmono XCOLORRANGE=LIMITED\nFRAME\n" +
                                 planes + "FRAME\n" + planes);
  for (unsigned gray = 0; gray < 256; ++gray) {
    image.pixels.assign(4, static_cast<uint8_t>(gray));
    const std::string bytes = film(image, {});
    EXPECT_NEAR(static_cast<uint8_t>(bytes.back()), 16 + 219 * gray / 255.0, 0.54) << gray;
  }
}

}  // namespace
}  // namespace vistrel
