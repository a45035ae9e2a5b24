// Monochrome frames: origin, window, depth, and binning as the entries see it.
#include "output/mono.h"

#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(MonoEntries);
VISTREL_LEVEL_SUITE(Mono8);
VISTREL_LEVEL_SUITE(Mono16To8);
VISTREL_LEVEL_SUITE(Mono16);

// A whole frame of 12 x 12 blocks through the byte entry.
std::vector<uint8_t> uniform8(unsigned value, uint32_t nBinning) {
  const uint32_t width = 12 * (nBinning + 1);
  Canvas<uint8_t> canvas(144);
  Image8BitGrayScale(flat<uint8_t>(width * width, value).data(), width, width, 8, canvas.data(), 0,
                     0, 12, 12, nBinning);
  return canvas.samples();
}

TEST_P(Mono8, RaisesTheBrightnessByTheFactorAndClamps) {
  EXPECT_THAT(uniform8(100, 0), Each(100));
  EXPECT_THAT(uniform8(100, 1), Each(200));
  EXPECT_THAT(uniform8(100, 2), Each(255));
  EXPECT_THAT(uniform8(100, 3), Each(255));
  EXPECT_THAT(uniform8(1, 1), Each(2));
  EXPECT_THAT(uniform8(1, 2), Each(3));
  EXPECT_THAT(uniform8(1, 3), Each(4));
  EXPECT_THAT(uniform8(0, 2), Each(0));
}

TEST_P(Mono8, CountsTheOriginInBinnedPixels) {
  const auto frame = painted<uint8_t>(16, 16, [](uint32_t x, uint32_t y) { return 16 * y + x; });
  Canvas<uint8_t> canvas(2);
  Image8BitGrayScale(frame.data(), 16, 16, 8, canvas.data(), 2, 1, 2, 1, 0);
  EXPECT_THAT(canvas.samples(), ElementsAre(18, 19));
  Image8BitGrayScale(frame.data(), 16, 16, 8, canvas.data(), 2, 1, 2, 1, 1);
  EXPECT_THAT(canvas.samples(), ElementsAre((36 + 37 + 52 + 53) / 2, (38 + 39 + 54 + 55) / 2));
  Image8BitGrayScale(frame.data(), 16, 16, 8, canvas.data(), 0, 1, 1, 1, 2);
  EXPECT_EQ(canvas.samples()[0], (48 + 49 + 50 + 64 + 65 + 66 + 80 + 81 + 82) / 3);
}

TEST_P(Mono8, FormsTheOriginIn32Bits) {
  const std::vector<uint8_t> frame = noise<uint8_t>(64, 255, 1);
  Canvas<uint8_t> canvas(32);
  Image8BitGrayScale(frame.data(), 0x10000, 1, 8, canvas.data(), 0, 0x10000, 32, 1, 0);
  EXPECT_TRUE(std::equal(frame.begin(), frame.begin() + 32, canvas.data()));
  Image8BitGrayScale(frame.data(), 0x10000, 1, 8, canvas.data(), 7, 0x10000, 32, 1, 0);
  EXPECT_TRUE(std::equal(frame.begin() + 7, frame.begin() + 39, canvas.data()));
}

TEST_P(Mono8, ReadsNeitherTheHeightNorTheDepth) {
  const std::vector<uint8_t> frame = noise<uint8_t>(40, 255, 2);
  Canvas<uint8_t> canvas(40);
  for (uint32_t any : {0u, 1u, 12u, 0xFFFFFFFFu}) {
    Image8BitGrayScale(frame.data(), 40, any, any, canvas.data(), 0, 0, 40, 1, 0);
    EXPECT_EQ(canvas.samples(), frame);
  }
}

std::vector<uint8_t> reduce8(const std::vector<uint16_t>& row, uint32_t nSrcBits,
                             uint32_t nLutMode) {
  const uint32_t width = static_cast<uint32_t>(row.size());
  Canvas<uint8_t> canvas(width);
  Image8BitGrayScale(row.data(), width, 1, nSrcBits, canvas.data(), 0, 0, width, 1, 0, nLutMode,
                     nullptr);
  return canvas.samples();
}

TEST_P(Mono16To8, WindowModesKeepEightBitsEachOnePlaceLower) {
  const std::vector<uint16_t> row = {0xABC, 0x5BC, 0x2BC, 0x00F};
  EXPECT_THAT(reduce8(row, 12, 0), ElementsAre(0xAB, 0x5B, 0x2B, 0));
  EXPECT_THAT(reduce8(row, 12, 1), ElementsAre(255, 0xB7, 0x57, 1));
  EXPECT_THAT(reduce8(row, 12, 2), ElementsAre(255, 255, 0xAF, 3));
}

TEST_P(Mono16To8, WindowTwoOfTenBitsClampsFrom256On) {
  EXPECT_THAT(reduce8({0, 254, 255, 256, 257, 511, 512, 1023}, 10, 2),
              ElementsAre(0, 254, 255, 255, 255, 255, 255, 255));
}

TEST_P(Mono16To8, TooFewSourceBitsGiveBlack) {
  EXPECT_THAT(reduce8(flat<uint16_t>(100, 255), 8, 1), Each(0));
  EXPECT_THAT(reduce8(flat<uint16_t>(100, 255), 8, 2), Each(0));
}

std::vector<uint16_t> reduce16(const std::vector<uint16_t>& row, uint32_t nSrcBits,
                               uint32_t nDstBits, uint32_t nLutMode) {
  const uint32_t width = static_cast<uint32_t>(row.size());
  Canvas<uint16_t> canvas(width);
  Image16BitGrayScale(row.data(), width, 1, nSrcBits, canvas.data(), 0, 0, width, 1, nDstBits, 0,
                      nLutMode);
  return canvas.samples();
}

// quirk: nine-bit-window
TEST_P(Mono16, OnlyNineBitsHaveAWindowAndItMovesByOnePlace) {
  const std::vector<uint16_t> row = {0, 100, 511, 512, 1023};
  EXPECT_THAT(reduce16(row, 10, 9, 0), ElementsAre(0, 50, 255, 256, 511));
  for (uint32_t nLutMode : {1u, 2u, 3u, 7u, 8u, 10u, 0xFFFFFFFFu}) {
    EXPECT_THAT(reduce16(row, 10, 9, nLutMode), ElementsAre(0, 100, 511, 511, 511));
    EXPECT_THAT(reduce16(row, 10, 8, nLutMode), ElementsAre(0, 25, 127, 128, 255));
    EXPECT_THAT(reduce16(row, 10, 10, nLutMode), ElementsAre(0, 100, 511, 512, 1023));
  }
}

TEST_P(Mono16, MoreDestinationBitsThanTheSourceHasGiveBlack) {
  for (uint32_t nDstBits = 11; nDstBits <= 26; ++nDstBits)
    EXPECT_THAT(reduce16(flat<uint16_t>(70, 65535), 10, nDstBits, 0), Each(0));
}

TEST_P(Mono16, BinnedPixelsClampAtTheirCeiling) {
  Canvas<uint16_t> canvas(33);
  const std::vector<uint16_t> frame = flat<uint16_t>(4 * 33 * 4, 300);
  const uint16_t expected[] = {300, 600, 900, 1023};
  for (uint32_t nBinning = 0; nBinning < 4; ++nBinning) {
    Image16BitGrayScale(frame.data(), 4 * 33, 4, 10, canvas.data(), 0, 0, 33, 1, 10, nBinning, 0);
    EXPECT_THAT(canvas.samples(), Each(expected[nBinning]));
  }
}

TEST_P(MonoEntries, NoneKnowsABinningAboveThree) {
  const std::vector<uint8_t> bytes(4096);
  const std::vector<uint16_t> samples16(4096);
  Canvas<uint8_t> dst8(16);
  Canvas<uint16_t> dst16(16);
  for (uint32_t nBinning : {4u, 5u, 255u, 0xFFFFFFFFu}) {
    Image8BitGrayScale(bytes.data(), 32, 32, 8, dst8.data(), 0, 0, 4, 4, nBinning);
    for (uint32_t nLutMode : {0u, 1u, 2u, 3u, 10u})
      Image8BitGrayScale(samples16.data(), 32, 32, 12, dst8.data(), 0, 0, 4, 4, nBinning, nLutMode,
                         samples16.data());
    Image16BitGrayScale(samples16.data(), 32, 32, 12, dst16.data(), 0, 0, 4, 4, 12, nBinning, 0);
  }
  EXPECT_TRUE(dst8.untouched());
  EXPECT_TRUE(dst16.untouched());
}

}  // namespace
}  // namespace vistrel::core::test
