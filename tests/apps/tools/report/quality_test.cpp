#include "apps/tools/report/quality.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vistrel {
namespace {

constexpr uint32_t kSide = 2 * app::kBorder + app::kWindow + 4;

// Of one colour.
Image flat(uint8_t blue, uint8_t green, uint8_t red) {
  Image image;
  image.layout = {kSide, kSide, 3, 8, kSide * 3, size_t{kSide} * kSide * 3, 0, 0, {}};
  image.pixels.resize(image.layout.bytes);
  for (size_t i = 0; i < image.pixels.size(); i += 3) {
    image.pixels[i] = blue;
    image.pixels[i + 1] = green;
    image.pixels[i + 2] = red;
  }
  return image;
}

TEST(Quality, OfEqualPictures) {
  const Image image = flat(10, 20, 30);
  const app::Quality quality = app::Evaluator(image).of(image);
  EXPECT_TRUE(std::isinf(quality.cpsnr));
  EXPECT_NEAR(quality.ssim, 1, 1e-6);
}

// One channel of three is wrong by 10; without variances, SSIM compares the means alone. Squares of
// 110 as floats are exact to 1e-3, which counts against K2's (0.03 * 255)^2 = 58.5.
TEST(Quality, OfAChannelThatIsTooBright) {
  const app::Quality quality = app::Evaluator(flat(100, 100, 100)).of(flat(100, 110, 100));
  EXPECT_NEAR(quality.cpsnr, 10 * std::log10(255.0 * 255 / (100 / 3.0)), 1e-9);
  const double c1 = 2.55 * 2.55;
  const double means = (2 * 100 * 110 + c1) / (100 * 100 + 110 * 110 + c1);
  EXPECT_NEAR(quality.ssim, (1 + means + 1) / 3, 1e-5);
}

TEST(Quality, TheBorderDoesNotCount) {
  const Image reference = flat(100, 100, 100);
  Image picture = reference;
  const size_t inside = (size_t{app::kBorder} * kSide + app::kBorder) * 3;
  for (size_t i = 0; i < inside; ++i) picture.pixels[i] = 0;
  EXPECT_TRUE(std::isinf(app::Evaluator(reference).of(picture).cpsnr));
  picture.pixels[inside] = 0;
  EXPECT_FALSE(std::isinf(app::Evaluator(reference).of(picture).cpsnr));
}

}  // namespace
}  // namespace vistrel
