// Gray binning: the luminance to its last bit, and the rows that it reads.
#include "output/colour.h"
#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/output/members.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(GrayMember);
VISTREL_LEVEL_SUITE(Gray1x1);
VISTREL_LEVEL_SUITE(Gray3x3);
VISTREL_LEVEL_SUITE(GrayRows);

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;

// Pixel (blue, green, red) `width` times over through the 1x1 members; all results are equal.
unsigned gray(unsigned blue, unsigned green, unsigned red, uint32_t width = 1) {
  const Bytes image = painted<uint8_t>(3, width, [&](uint32_t c, uint32_t) {
    return c == 0 ? blue : c == 1 ? green : red;
  });
  const Samples16 samples16(image.begin(), image.end());
  Canvas<uint8_t> bytes(width), reduced(width);
  Canvas<uint16_t> wide(width);
  ImageGrayBinning(1, image.data(), width, 8u, bytes.data(), width, 1u, 8u, 0u);
  ImageGrayBinning(1, samples16.data(), width, 8u, reduced.data(), width, 1u, 8u, 0u);
  ImageGrayBinning(1, samples16.data(), width, 8u, wide.data(), width, 1u, 8u, 0u);
  const unsigned value = bytes.data()[0];
  EXPECT_THAT(bytes.samples(), Each(value));
  EXPECT_THAT(reduced.samples(), Each(value));
  EXPECT_THAT(wide.samples(), Each(value));
  return value;
}

// quirk: gray-loses-one
TEST_P(Gray1x1, UniformValuesThatComeOutOneLower) {
  for (unsigned v : {1u, 2u, 4u, 8u, 11u, 13u, 16u, 22u, 26u, 27u, 32u, 64u, 128u, 254u})
    for (uint32_t width : {1u, 16u, 67u}) EXPECT_EQ(gray(v, v, v, width), v - 1);
}

TEST_P(Gray1x1, UniformValuesThatStay) {
  for (unsigned v : {0u, 100u, 200u, 231u, 255u})
    for (uint32_t width : {1u, 16u, 67u}) EXPECT_EQ(gray(v, v, v, width), v);
}

TEST_P(Gray1x1, WeighsTheChannels) {
  EXPECT_EQ(gray(0, 0, 1), 0u);  // 0.299
  EXPECT_EQ(gray(0, 2, 0), 1u);  // 1.174
  EXPECT_EQ(gray(250, 0, 0), 28u);
  EXPECT_EQ(gray(0, 250, 0), 146u);
  EXPECT_EQ(gray(0, 0, 250), 74u);
}

// Each pixel has another result in another order of additions, with a fused addition, or from the
// exact sum.
TEST_P(Gray1x1, AddsGreenAndRedFirstAndBlueLast) {
  const unsigned pixels[][4] = {{35, 108, 186, 122}, {183, 39, 255, 120}, {115, 252, 234, 231},
                                {28, 191, 9, 118},   {46, 7, 253, 84},    {175, 210, 220, 209},
                                {42, 77, 87, 75}};
  for (const auto& p : pixels)
    for (uint32_t width : {1u, 16u, 67u}) EXPECT_EQ(gray(p[0], p[1], p[2], width), p[3]);
}

TEST_P(Gray1x1, EveryPixelOfBytes) {
  constexpr uint32_t kGreensAndReds = 256 * 256;
  Bytes image(3 * kGreensAndReds), expected(kGreensAndReds);
  Canvas<uint8_t> canvas(kGreensAndReds);
  for (unsigned blue = 0; blue < 256; ++blue) {
    for (unsigned i = 0; i < kGreensAndReds; ++i) {
      const unsigned green = i >> 8, red = i & 255;
      image[3 * i] = static_cast<uint8_t>(blue);
      image[3 * i + 1] = static_cast<uint8_t>(green);
      image[3 * i + 2] = static_cast<uint8_t>(red);
      expected[i] = static_cast<uint8_t>(luminance(blue, green, red));
    }
    ImageGrayBinning(1, image.data(), 0u, 8u, canvas.data(), kGreensAndReds, 1u, 8u, 0u);
    ASSERT_EQ(canvas.samples(), expected) << "blue " << blue;
  }
}

TEST_P(Gray1x1, SixteenBitsLoseOneToo) {
  Canvas<uint16_t> canvas(40);
  for (unsigned v : {1023u, 65535u}) {
    const Samples16 image = flat<uint16_t>(120, v);
    ImageGrayBinning(1, image.data(), 40u, 16u, canvas.data(), 40u, 1u, 16u, 0u);
    EXPECT_THAT(canvas.samples(), Each(v - 1));
  }
}

TEST_P(Gray1x1, MapsTheSamplesBeforeItWeighsThem) {
  Bytes table(1024);
  table[1000] = 254;
  const Samples16 image = flat<uint16_t>(90, 4000);
  Canvas<uint8_t> canvas(30);
  ImageGrayBinning(1, CLutTransform{table.data(), image.data(), 2}, 30u, 8u, canvas.data(), 30u, 1u,
                   8u, 0u);
  EXPECT_THAT(canvas.samples(), Each(253));
}

TEST_P(GrayMember, ClampsTheLuminanceAndNotTheChannels) {
  const Bytes image =
      painted<uint8_t>(3, 4 * 50, [](uint32_t c, uint32_t) { return c == 0 ? 200 : 0; });
  Canvas<uint8_t> canvas(50);
  ImageGrayBinning(2, image.data(), 300u, 8u, canvas.data(), 50u, 1u, 8u, 0u);
  EXPECT_THAT(canvas.samples(), Each(45));  // 400 * 0.114, where 255 * 0.114 is 29
  const Bytes white = flat<uint8_t>(12 * 50, 255);
  ImageGrayBinning(2, white.data(), 300u, 8u, canvas.data(), 50u, 1u, 8u, 0u);
  EXPECT_THAT(canvas.samples(), Each(255));
}

TEST_P(GrayMember, UniformImageComesOutTwiceAsBrightIn2x2) {
  const Bytes image = flat<uint8_t>(12 * 50, 100);
  Canvas<uint8_t> canvas(50);
  ImageGrayBinning(2, image.data(), 300u, 8u, canvas.data(), 50u, 1u, 8u, 0u);
  EXPECT_THAT(canvas.samples(), Each(200));
}

TEST_P(GrayMember, CutsTheCeilingToTheSampleWidth) {
  const Samples16 image = flat<uint16_t>(90, 40000);
  Canvas<uint8_t> canvas(30);
  ImageGrayBinning(1, image.data(), 30u, 10u, canvas.data(), 30u, 1u, 10u, 0u);
  EXPECT_THAT(canvas.samples(), Each(255));
}

// One sample of 90 gives its channel 30: 3.42 from blue, 17.61 from green, 8.97 from red.
TEST_P(Gray3x3, EveryTapOfTheMiddleRow) {
  const unsigned expected[9] = {3, 0, 17, 12, 17, 8, 3, 17, 8};
  for (uint32_t k = 0; k < 9; ++k) {
    Bytes image(27);
    image[9 + k] = 90;
    Samples16 samples16(image.begin(), image.end());
    uint8_t bytes = 0;
    uint16_t wide = 0;
    ImageGrayBinning(3, image.data(), 9u, 8u, &bytes, 1u, 1u, 8u, 0u);
    ImageGrayBinning(3, samples16.data(), 9u, 8u, &wide, 1u, 1u, 8u, 0u);
    EXPECT_EQ(bytes, expected[k]) << "offset " << k;
    EXPECT_EQ(wide, expected[k]) << "offset " << k;
  }
}

TEST_P(Gray3x3, TheOuterRowsAreRegular) {
  const unsigned expected[3] = {3, 17, 8};
  for (size_t k :
       {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 18u, 19u, 20u, 21u, 22u, 23u, 24u, 25u, 26u}) {
    uint8_t out = 0;
    ImageGrayBinning(3, impulse<uint8_t>(27, k, 90).data(), 9u, 8u, &out, 1u, 1u, 8u, 0u);
    EXPECT_EQ(out, expected[k % 3]) << "offset " << k;
  }
}

TEST_P(Gray3x3, TheMiddleRowIsIrregularInEveryPixel) {
  constexpr uint32_t kWidth = 150;  // red of 90: green 30, red 240
  const Bytes image =
      painted<uint8_t>(3, 9 * kWidth, [](uint32_t c, uint32_t) { return c == 2 ? 90 : 0; });
  Canvas<uint8_t> canvas(kWidth);
  ImageGrayBinning(3, image.data(), 9 * kWidth, 8u, canvas.data(), kWidth, 1u, 8u, 0u);
  EXPECT_THAT(canvas.samples(), Each(89));  // 17.61 + 71.76
}

TEST_P(GrayRows, TheStrideCountsSamplesAndNotPixels) {
  // Two blocks of 2x2, one below the other, rows 8 samples apart: the image as text would have
  // rows of 8 pixels, 24 samples.
  const auto grayOf = [](size_t at) {
    Canvas<uint8_t> canvas(2);
    const Bytes image = impulse<uint8_t>(72, at, 200);
    ImageGrayBinning(2, image.data(), 8u, 8u, canvas.data(), 1u, 2u, 8u, 0u);
    return canvas.samples();
  };
  EXPECT_THAT(grayOf(0), ElementsAre(11, 0));
  EXPECT_THAT(grayOf(8), ElementsAre(11, 0));
  EXPECT_THAT(grayOf(16), ElementsAre(0, 11));
  EXPECT_THAT(grayOf(24), ElementsAre(0, 11));
  EXPECT_THAT(grayOf(48), ElementsAre(0, 0));
}

// quirk: gray-stride
TEST_P(GrayRows, RowsMixInABinnedImage) {
  // A guarded image for 6 x 2 pixels of 2x2: rows of 16 pixels, row r holding 10 * r.
  const Bytes image = painted<uint8_t>(48, 8, [](uint32_t, uint32_t y) { return 10 * y; });
  Canvas<uint8_t> canvas(12);
  ConvertToOutputFormat8(image.data(), 6, 2, canvas.data(), 5, 1, 1);
  const Bytes result = canvas.samples();
  EXPECT_EQ(result[0], 40);  // rows 2 and 2
  EXPECT_EQ(result[5], 50);  // rows 2 and 3
  EXPECT_EQ(result[6], 50);  // rows 2 and 3
  EXPECT_EQ(result[7], 54);  // partly row 3 already: 50, 55, 55
}

TEST_P(GrayRows, TheStrideIsNotReadAt1x1) {
  constexpr uint32_t kWidth = 70, kStep = 3 * (kWidth + 4);
  const Bytes image = noise<uint8_t>(3 * kStep, 255, 3);
  for (uint32_t nStride : {0u, 1u, kWidth, kWidth + 4, 999u, 0xFFFFFFFFu}) {
    Canvas<uint8_t> canvas(3 * kWidth);
    ImageGrayBinning(1, image.data(), nStride, 8u, canvas.data(), kWidth, 3u, 8u, 0u);
    const Bytes result = canvas.samples();
    for (uint32_t i = 0; i < result.size(); ++i) {
      const uint8_t* p = &image[i / kWidth * kStep + 3 * (i % kWidth)];
      ASSERT_EQ(result[i], luminance(p[0], p[1], p[2])) << i;
    }
  }
}

TEST_P(GrayRows, ACompactImageIsSheared) {
  // Rows of 4 pixels, row r holding 10 * r: each result row begins 12 samples further along.
  const Bytes image = painted<uint8_t>(12, 9, [](uint32_t, uint32_t y) { return 10 * y; });
  Canvas<uint8_t> canvas(16);
  ConvertToOutputFormat8(image.data(), 4, 4, canvas.data(), 5, 0, 0);
  EXPECT_THAT(canvas.samples(),
              ElementsAre(0, 0, 0, 0, 20, 20, 20, 20, 40, 40, 40, 40, 60, 60, 60, 60));
}

TEST_P(GrayRows, AGuardedImageIsRightAt1x1) {
  // 5 x 4 pixels within the guard: column c of the image holds 20 * c, the guard 255.
  const Bytes image = painted<uint8_t>(27, 8, [](uint32_t x, uint32_t y) {
    const bool guard = x < 6 || x >= 21 || y < 2 || y >= 6;
    return guard ? 255 : 20 * (x / 3 - 2);
  });
  Canvas<uint8_t> canvas(20);
  ConvertToOutputFormat8(image.data(), 5, 4, canvas.data(), 5, 0, 1);
  const Bytes result = canvas.samples();
  for (size_t i = 0; i < result.size(); ++i) EXPECT_EQ(result[i], 20 * (i % 5));
}

}  // namespace
}  // namespace vistrel::core::test
