// Colour binning: the channels' arithmetic, the packing, and the taps of the 3x3 members.
#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/output/members.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(ColourMember);
VISTREL_LEVEL_SUITE(Colour3x3);

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;
using Pixel = std::array<unsigned, 3>;

// The result of all seven members for one block of n x n pixels: blue, green, red.
Pixel pixelOf(const uint8_t* bgr) { return {bgr[0], bgr[1], bgr[2]}; }
Pixel pixelOf(const uint16_t* bgr) { return {bgr[0], bgr[1], bgr[2]}; }
Pixel pixelOfArgb(const uint8_t* argb) { return {argb[3], argb[2], argb[1]}; }

std::vector<Pixel> allMembers(unsigned n, const Bytes& block) {
  Bytes table(1024);
  for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<uint8_t>(i);
  const Samples16 samples16(block.begin(), block.end());
  Samples16 high;
  for (uint8_t sample : block) high.push_back(static_cast<uint16_t>(sample << 4 | 0xF));
  const CLutTransform mapped{table.data(), samples16.data(), 0};
  std::vector<Pixel> pixels;
  uint8_t out[4];
  uint16_t wide[3];
  ImageBGRBinning(n, block.data(), n, 8u, out, 1u, 1u, 8u, 0u), pixels.push_back(pixelOf(out));
  ImageBGRBinning(n, high.data(), n, 12u, out, 1u, 1u, 8u, 0u), pixels.push_back(pixelOf(out));
  ImageBGRBinning(n, mapped, n, 8u, out, 1u, 1u, 8u, 0u), pixels.push_back(pixelOf(out));
  ImageBGRBinning(n, samples16.data(), n, 8u, wide, 1u, 1u, 8u, 0u),
      pixels.push_back(pixelOf(wide));
  ImageARGBBinning(n, block.data(), n, 8u, out, 1u, 1u, 8u, 0u), pixels.push_back(pixelOfArgb(out));
  ImageARGBBinning(n, high.data(), n, 12u, out, 1u, 1u, 8u, 0u), pixels.push_back(pixelOfArgb(out));
  ImageARGBBinning(n, mapped, n, 8u, out, 1u, 1u, 8u, 0u), pixels.push_back(pixelOfArgb(out));
  return pixels;
}

// Blocks of `value` in one channel, zero in the other two.
Bytes oneChannel(size_t samples, unsigned channel, unsigned value) {
  Bytes image(samples);
  for (size_t i = channel; i < samples; i += 3) image[i] = static_cast<uint8_t>(value);
  return image;
}

TEST_P(Colour3x3, OneRedSampleOfTheMiddleRowGoesToGreen) {
  EXPECT_THAT(allMembers(3, oneChannel(27, 2, 90)), Each(Pixel{0, 30, 240}));
}

TEST_P(Colour3x3, OneBlueSampleOfTheMiddleRowGoesToRed) {
  EXPECT_THAT(allMembers(3, oneChannel(27, 0, 90)), Each(Pixel{255, 0, 30}));
}

TEST_P(Colour3x3, OneGreenSampleOfTheMiddleRowIsNotRead) {
  EXPECT_THAT(allMembers(3, oneChannel(27, 1, 90)), Each(Pixel{0, 240, 0}));
}

// quirk: middle-row-taps
TEST_P(Colour3x3, EveryTapOfTheMiddleRow) {
  const Pixel reached[9] = {{30, 0, 0}, {0, 0, 0},  {0, 30, 0}, {30, 0, 30}, {0, 30, 0},
                            {0, 0, 30}, {30, 0, 0}, {0, 30, 0}, {0, 0, 30}};
  for (size_t k = 0; k < 9; ++k)
    EXPECT_THAT(allMembers(3, impulse<uint8_t>(27, 9 + k, 90)), Each(reached[k])) << "offset " << k;
}

TEST_P(Colour3x3, TheOuterRowsAreRegular) {
  for (size_t row : {0u, 2u})
    for (size_t k = 0; k < 9; ++k) {
      Pixel expected{};
      expected[k % 3] = 30;
      EXPECT_THAT(allMembers(3, impulse<uint8_t>(27, 9 * row + k, 90)), Each(expected));
    }
}

// The same taps in every pixel of a wide image, not only in a single block.
TEST_P(Colour3x3, TheMiddleRowIsIrregularInEveryPixel) {
  constexpr uint32_t kWidth = 150;
  Canvas<uint8_t> bgr(3 * kWidth), argb(4 * kWidth);
  const Bytes red = oneChannel(27 * kWidth, 2, 90);
  ImageBGRBinning(3, red.data(), 3 * kWidth, 8u, bgr.data(), kWidth, 1u, 8u, 0u);
  ImageARGBBinning(3, red.data(), 3 * kWidth, 8u, argb.data(), kWidth, 1u, 8u, 0u);
  for (size_t x = 0; x < kWidth; ++x) {
    EXPECT_EQ(pixelOf(&bgr.data()[3 * x]), (Pixel{0, 30, 240}));
    EXPECT_EQ(pixelOfArgb(&argb.data()[4 * x]), (Pixel{0, 30, 240}));
  }
}

TEST_P(ColourMember, MembersOtherThan3x3AreRegular) {
  for (unsigned n : {1u, 2u, 4u})
    for (size_t k = 0; k < 3 * n * n; ++k) {
      Pixel expected{};
      expected[k % 3] = 120 / n;
      EXPECT_THAT(allMembers(n, impulse<uint8_t>(3 * n * n, k, 120)), Each(expected));
    }
}

TEST_P(ColourMember, UniformImageComesOutTwiceAsBrightIn2x2) {
  EXPECT_THAT(allMembers(2, flat<uint8_t>(12, 100)), Each(Pixel{200, 200, 200}));
}

TEST_P(ColourMember, AlphaKeepsWhatTheCallerHad) {
  constexpr uint32_t kWidth = 133;
  for (unsigned n = 1; n <= 4; ++n) {
    Canvas<uint8_t> canvas(4 * kWidth);  // 0x55 everywhere
    const Bytes image = flat<uint8_t>(3 * n * n * kWidth, 60);
    ImageARGBBinning(n, image.data(), n * kWidth, 8u, canvas.data(), kWidth, 1u, 8u, 0u);
    const Bytes result = canvas.samples();
    for (size_t i = 0; i < result.size(); ++i)
      ASSERT_EQ(result[i], i % 4 == 0 ? 0x55 : 60 * n) << i;
  }
}

TEST_P(ColourMember, StoresBgrInSourceOrderAndArgbReversed) {
  const Bytes image = {1, 2, 3, 4, 5, 6};
  Canvas<uint8_t> bgr(6), argb(8);
  ImageBGRBinning(1, image.data(), 2u, 8u, bgr.data(), 2u, 1u, 8u, 0u);
  ImageARGBBinning(1, image.data(), 2u, 8u, argb.data(), 2u, 1u, 8u, 0u);
  EXPECT_THAT(bgr.samples(), ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(argb.samples(), ElementsAre(0x55, 3, 2, 1, 0x55, 6, 5, 4));
}

TEST_P(ColourMember, ShiftsEachSampleBeforeTheSum) {
  Canvas<uint8_t> canvas(3);
  const Samples16 image = flat<uint16_t>(12, 15);
  ImageBGRBinning(2, image.data(), 2u, 12u, canvas.data(), 1u, 1u, 8u, 0u);
  EXPECT_THAT(canvas.samples(), Each(0));
}

TEST_P(ColourMember, ClampsToItsCeilingAndCutsThatToTheSampleWidth) {
  constexpr uint32_t kWidth = 70;
  const Samples16 image = flat<uint16_t>(3 * kWidth, 40000);
  Canvas<uint8_t> bytes(3 * kWidth);
  Canvas<uint16_t> samples16(3 * kWidth);
  ImageBGRBinning(1, image.data(), kWidth, 10u, bytes.data(), kWidth, 1u, 10u, 0u);
  EXPECT_THAT(bytes.samples(), Each(255));
  ImageBGRBinning(1, image.data(), kWidth, 10u, samples16.data(), kWidth, 1u, 10u, 0u);
  EXPECT_THAT(samples16.samples(), Each(1023));
  ImageBGRBinning(1, image.data(), kWidth, 16u, samples16.data(), kWidth, 1u, 16u, 0u);
  EXPECT_THAT(samples16.samples(), Each(40000));
}

TEST_P(ColourMember, WritesNothingWithoutWidthOrHeight) {
  const Bytes image(3 * 64);
  Canvas<uint8_t> canvas(64);
  for (unsigned n = 1; n <= 4; ++n)
    for (bool noHeight : {false, true}) {
      const uint32_t w = noHeight ? 4 : 0, h = noHeight ? 0 : 4;
      ImageBGRBinning(n, image.data(), 8u, 8u, canvas.data(), w, h, 8u, 0u);
      ImageARGBBinning(n, image.data(), 8u, 8u, canvas.data(), w, h, 8u, 0u);
      ImageGrayBinning(n, image.data(), 8u, 8u, canvas.data(), w, h, 8u, 0u);
    }
  EXPECT_TRUE(canvas.untouched());
}

}  // namespace
}  // namespace vistrel::core::test
