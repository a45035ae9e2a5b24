// Which member a colour conversion takes, with which shift, and where it begins to read.
#include "output/colour.h"

#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(ColourLayout);
VISTREL_LEVEL_SUITE(ColourDepth);
VISTREL_LEVEL_SUITE(ColourFormats);

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;

constexpr uint32_t kBgr24 = 2, kArgb32 = 3, kGray8 = 5, kGray16 = 6, kBgr48 = 7;

// 100 x 2 pixels of 2x2 from a guarded image: rows of 204 pixels, 612 samples.
Bytes guardedBgr(const Bytes& image) {
  Canvas<uint8_t> canvas(600);
  ConvertToOutputFormat8(image.data(), 100, 2, canvas.data(), kBgr24, 1, 1);
  return canvas.samples();
}

TEST_P(ColourLayout, AGuardedImageBeginsAtSample1230) {
  for (size_t at : {1230u, 1230u + 3, 1230u + 612, 1230u + 612 + 3}) {
    Bytes expected(600);
    expected[0] = 50;
    EXPECT_EQ(guardedBgr(impulse<uint8_t>(8 * 612, at, 100)), expected) << at;
  }
}

TEST_P(ColourLayout, GuardedRowsAre204PixelsApart) {
  for (size_t at : {1230u + 2 * 612, 1230u + 3 * 612}) {
    Bytes expected(600);
    expected[300] = 50;
    EXPECT_EQ(guardedBgr(impulse<uint8_t>(8 * 612, at, 100)), expected) << at;
  }
}

TEST_P(ColourLayout, TheGuardIsNotRead) {
  const Bytes image = painted<uint8_t>(612, 8, [](uint32_t x, uint32_t y) {
    return x < 6 || x >= 606 || y < 2 || y >= 6 ? 255 : 0;
  });
  EXPECT_THAT(guardedBgr(image), Each(0));
}

TEST_P(ColourLayout, ACompactImageHasNoGuard) {
  for (uint32_t nBinning = 0; nBinning < 4; ++nBinning) {
    const uint32_t n = nBinning + 1, row = 3 * n * 50;
    Bytes image(row * n * 2);
    image[0] = image[row * n] = static_cast<uint8_t>(60 * n);  // the first sample of both rows
    Canvas<uint8_t> canvas(300);
    ConvertToOutputFormat8(image.data(), 50, 2, canvas.data(), kBgr24, nBinning, 0);
    Bytes expected(300);
    expected[0] = expected[150] = 60;
    EXPECT_EQ(canvas.samples(), expected) << nBinning;
  }
}

TEST_P(ColourLayout, SixteenBitSamplesLieAsBytesDoCountedInSamples) {
  Samples16 image(8 * 612);
  image[1230] = image[1230 + 2 * 612] = 100;
  Canvas<uint8_t> canvas(600);
  ConvertToOutputFormat16(image.data(), 100, 2, 8, canvas.data(), kBgr24, 0, nullptr, 1, 24, 1);
  Bytes expected(600);
  expected[0] = expected[300] = 50;
  EXPECT_EQ(canvas.samples(), expected);
}

// One sample value, in all channels of a 60 x 1 compact image, to the value of a colour channel.
template <class Sample>
unsigned channel(uint32_t nFormat, unsigned value, uint32_t nSrcBits, uint32_t nDstBits,
                 uint32_t nLutMode, const uint16_t* pUserLut = nullptr) {
  const size_t step = nFormat == kBgr24 || nFormat == kBgr48 ? 3 : nFormat == kArgb32 ? 4 : 1;
  const Samples16 image = flat<uint16_t>(180, value);
  Canvas<Sample> canvas(60 * step);
  ConvertToOutputFormat16(image.data(), 60, 1, nSrcBits, canvas.data(), nFormat, nLutMode, pUserLut,
                          0, nDstBits, 0);
  const std::vector<Sample> result = canvas.samples();
  for (size_t i = 0; i < result.size(); ++i) {
    const bool alpha = step == 4 && i % 4 == 0;
    EXPECT_EQ(result[i], alpha ? Canvas<Sample>::kPreset : result.back());
  }
  return result.back();
}

TEST_P(ColourDepth, ChannelsHaveAThirdOfTheBits) {
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0xABC, 12, 24, 0), 0xABu);
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0xABC, 12, 25, 0), 0xABu);  // truncated
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0xABC, 12, 26, 0), 0xABu);
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0xABC, 12, 23, 0), 0x55u);  // seven bits
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0xFFF, 12, 21, 0), 127u);
}

TEST_P(ColourDepth, TheSecondWindowShiftsByTwoLessAndClamps) {
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0x2BC, 12, 24, 2), 0xAFu);
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0x3FF, 12, 24, 2), 255u);
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0x400, 12, 24, 2), 255u);
  EXPECT_EQ(channel<uint8_t>(kBgr24, 0x2BC, 12, 24, 1), 0x57u);
  EXPECT_EQ(channel<uint8_t>(kArgb32, 0x2BC, 12, 24, 1), 0x57u);
}

// quirk: argb-ten-bits
TEST_P(ColourDepth, ArgbOf32BitsHasTenBitsAChannel) {
  EXPECT_EQ(channel<uint8_t>(kArgb32, 0x123, 12, 32, 0), 0x48u);
  EXPECT_EQ(channel<uint8_t>(kArgb32, 0x3FF, 12, 32, 0), 255u);
  EXPECT_EQ(channel<uint8_t>(kArgb32, 0x400, 12, 32, 0), 255u);
  EXPECT_EQ(channel<uint8_t>(kArgb32, 0xFFF, 12, 32, 0), 255u);
  EXPECT_EQ(channel<uint8_t>(kArgb32, 0xABC, 12, 24, 0), 0xABu);
}

TEST_P(ColourDepth, Bgr48ShiftsByTheDifferenceModulo32) {
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0xABC, 12, 36, 0), 0xABCu);
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0xFFF, 12, 48, 0), 0u);
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0xFFFF, 12, 48, 0), 0u);
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0xFFFF, 16, 48, 0), 0xFFFFu);
}

TEST_P(ColourDepth, GrayUsesTheBitsUndivided) {
  EXPECT_EQ(channel<uint8_t>(kGray8, 100 << 4, 12, 8, 0), 100u);
  EXPECT_EQ(channel<uint8_t>(kGray8, 50 << 2, 12, 10, 0), 50u);
  EXPECT_EQ(channel<uint8_t>(kGray8, 0xFFF, 12, 10, 0), 255u);
  EXPECT_EQ(channel<uint8_t>(kGray8, 0xFFF, 12, 24, 0), 0u);  // the difference wraps
  EXPECT_EQ(channel<uint8_t>(kGray8, 50 << 2, 12, 8, 2), 50u);
  EXPECT_EQ(channel<uint16_t>(kGray16, 100 << 2, 12, 10, 0), 100u);
}

// quirk: no-table-for-16-bits. A curve or a table costs one bit of brightness.
TEST_P(ColourDepth, SixteenBitFormatsHaveNoTableAndShiftByOneMore) {
  for (uint32_t nLutMode : {3u, 5u, 7u, 8u, 10u, 0xFFFFFFFFu}) {
    EXPECT_EQ(channel<uint16_t>(kGray16, 200, 12, 12, nLutMode), 100u);
    EXPECT_EQ(channel<uint16_t>(kBgr48, 0xABC, 12, 36, nLutMode), 0x55Eu);
    EXPECT_EQ(channel<uint16_t>(kBgr48, 0xFFFF, 16, 48, nLutMode), 0x7FFFu);
  }
}

TEST_P(ColourDepth, SixteenBitFormatsMoveTheirWindow) {
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0x0BC, 12, 30, 0), 0x02Fu);
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0x0BC, 12, 30, 1), 0x05Eu);
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0x0BC, 12, 30, 2), 0x0BCu);
  EXPECT_EQ(channel<uint16_t>(kBgr48, 0xFFF, 12, 30, 2), 1023u);
  EXPECT_EQ(channel<uint16_t>(kGray16, 200, 12, 10, 2), 200u);
}

TEST_P(ColourDepth, TableModesIgnoreTheDestinationBits) {
  Samples16 user(4096);
  user[4 * 300] = 200;
  for (uint32_t nFormat : {kBgr24, kArgb32, 4u, kGray8})
    for (uint32_t nDstBits : {0u, 8u, 24u, 32u})
      EXPECT_EQ(
          channel<uint8_t>(nFormat == 4 ? kArgb32 : nFormat, 1201, 12, nDstBits, 10, user.data()),
          200u);
}

TEST_P(ColourDepth, CurvesApplyToEveryEightBitFormat) {
  // Curve 5 maps 512 of 1024 to 96, which all formats double in 2x2.
  for (uint32_t nFormat : {2u, 3u, 4u, 5u}) {
    const Samples16 image = flat<uint16_t>(12 * 60, 512 << 2);
    Canvas<uint8_t> canvas(240);
    ConvertToOutputFormat16(image.data(), 60, 1, 12, canvas.data(), nFormat, 6, nullptr, 1, 24, 0);
    const Bytes result = canvas.samples();
    const size_t written = nFormat == 2 ? 180 : nFormat == 5 ? 60 : 240;
    for (size_t i = 0; i < result.size(); ++i) {
      const bool kept = i >= written || (written == 240 && i % 4 == 0);
      ASSERT_EQ(result[i], kept ? 0x55 : 192) << "format " << nFormat << ", byte " << i;
    }
  }
}

TEST_P(ColourFormats, BothArgbCodesGiveTheSameBytes) {
  const Samples16 samples16 = noise<uint16_t>(3 * 16 * 40 * 3, 4095, 8);
  const Bytes bytes(samples16.begin(), samples16.end());
  for (uint32_t nBinning = 0; nBinning < 4; ++nBinning) {
    Canvas<uint8_t> three(480), four(480);
    ConvertToOutputFormat8(bytes.data(), 40, 3, three.data(), 3, nBinning, 0);
    ConvertToOutputFormat8(bytes.data(), 40, 3, four.data(), 4, nBinning, 0);
    EXPECT_EQ(three.samples(), four.samples());
    EXPECT_FALSE(four.untouched());
    for (uint32_t nLutMode : {0u, 2u, 3u}) {
      for (auto* canvas : {&three, &four})
        ConvertToOutputFormat16(samples16.data(), 40, 3, 12, canvas->data(),
                                canvas == &three ? 3 : 4, nLutMode, nullptr, nBinning, 24, 0);
      EXPECT_EQ(three.samples(), four.samples());
    }
  }
}

TEST_P(ColourFormats, BytesHaveNoMonoNorSixteenBitFormats) {
  const Bytes image(12 * 100, 9);
  Canvas<uint8_t> canvas(600);
  for (uint32_t nFormat : {0u, 1u, 6u, 7u, 8u, 255u, 0xFFFFFFFFu})
    for (uint32_t nBinning : {0u, 1u})
      ConvertToOutputFormat8(image.data(), 10, 5, canvas.data(), nFormat, nBinning, 0);
  EXPECT_TRUE(canvas.untouched());
}

TEST_P(ColourFormats, SixteenBitSamplesHaveNoMonoFormats) {
  const Samples16 image(12 * 100, 9);
  Canvas<uint8_t> canvas(600);
  for (uint32_t nFormat : {0u, 1u, 8u, 255u, 0xFFFFFFFFu})
    for (uint32_t nLutMode : {0u, 3u})
      ConvertToOutputFormat16(image.data(), 10, 5, 12, canvas.data(), nFormat, nLutMode, nullptr, 0,
                              24, 0);
  EXPECT_TRUE(canvas.untouched());
}

TEST_P(ColourFormats, NoFormatHasABinningAboveThree) {
  const Samples16 image(3 * 64 * 64, 9);
  const Bytes bytes(3 * 64 * 64, 9);
  Canvas<uint8_t> canvas(600);
  for (uint32_t nBinning : {4u, 5u, 255u, 0xFFFFFFFFu})
    for (uint32_t nFormat = 2; nFormat < 8; ++nFormat) {
      ConvertToOutputFormat8(bytes.data(), 4, 4, canvas.data(), nFormat, nBinning, 0);
      for (uint32_t nLutMode : {0u, 3u, 10u})
        ConvertToOutputFormat16(image.data(), 4, 4, 12, canvas.data(), nFormat, nLutMode,
                                image.data(), nBinning, 24, 0);
    }
  EXPECT_TRUE(canvas.untouched());
}

}  // namespace
}  // namespace vistrel::core::test
