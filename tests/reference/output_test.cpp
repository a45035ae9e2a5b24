#include "tests/reference/output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::Each;
using testing::ElementsAre;

TEST(ReferenceMono, ShiftsEachSampleBeforeTheSum) {
  const uint16_t source[4] = {0x123, 0x456, 0x789, 0x0AB};
  uint8_t out = 0;
  reference::ImageBinning2x2<const uint16_t*, uint8_t>(source, 2, 12, &out, 1, 1, 8, 0);
  EXPECT_EQ(out, 108);
}

TEST(ReferenceMono, DividesByTheEdgeAndClamps) {
  const std::vector<uint8_t> hundreds(16, 100);
  uint8_t out = 0;
  const auto binned = [&](uint32_t nBinning) {
    reference::Image8BitGrayScale(hundreds.data(), 4, 4, 8, &out, 0, 0, 1, 1, nBinning);
    return out;
  };
  EXPECT_EQ(binned(0), 100);
  EXPECT_EQ(binned(1), 200);
  EXPECT_EQ(binned(2), 255);
  EXPECT_EQ(binned(3), 255);
}

TEST(ReferenceMono, MovesTheWindowOnlyOfNineBits) {
  const uint16_t source[2] = {600, 100};
  uint16_t out[2] = {};
  reference::Image16BitGrayScale(source, 2, 1, 10, out, 0, 0, 2, 1, 9, 0, 1);
  EXPECT_THAT(out, ElementsAre(511, 100));
  reference::Image16BitGrayScale(source, 2, 1, 10, out, 0, 0, 2, 1, 9, 0, 0);
  EXPECT_THAT(out, ElementsAre(300, 50));
}

TEST(ReferenceTable, SamplesTheUserTableAtItsStride) {
  std::vector<uint16_t> user(4096);
  for (unsigned i = 0; i < 4096; ++i) user[i] = static_cast<uint16_t>(i % 251);
  uint8_t table[1024];
  reference::Create10To8BitLUT(table, 10, user.data(), 2);
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 4);
  EXPECT_EQ(table[1023], 4092 % 251);
  reference::Create10To8BitLUT(table, 10, user.data(), 0);
  EXPECT_EQ(table[1023], 1023 % 251);
  reference::Create10To8BitLUT(table, 10, user.data(), 4);  // at most entry 4095
  EXPECT_EQ(table[255], 4080 % 251);
  EXPECT_EQ(table[256], 4095 % 251);
  EXPECT_EQ(table[1023], 4095 % 251);
  reference::Create10To8BitLUT(table, 8, user.data(), 0);
  EXPECT_THAT(table, Each(0));
}

// One channel of an image set to 90, binned 3x3: some taps of the middle row read another channel.
TEST(ReferenceColour, HasTheIrregularTapsOfThree) {
  std::vector<uint8_t> image(27, 0);
  uint8_t out[3] = {};
  for (unsigned k = 2; k < 27; k += 3) image[k] = 90;
  reference::ConvertToOutputFormat8(image.data(), 1, 1, out, 2, 2, 0);
  EXPECT_THAT(out, ElementsAre(0, 30, 240));
  for (unsigned k = 0; k < 27; ++k) image[k] = k % 3 == 0 ? 90 : 0;
  reference::ConvertToOutputFormat8(image.data(), 1, 1, out, 2, 2, 0);
  EXPECT_THAT(out, ElementsAre(255, 0, 30));
}

TEST(ReferenceColour, LeavesAlphaAlone) {
  const uint8_t image[6] = {1, 2, 3, 4, 5, 6};
  uint8_t out[8] = {0x55, 0, 0, 0, 0x55, 0, 0, 0};
  reference::ConvertToOutputFormat8(image, 2, 1, out, 3, 0, 0);
  EXPECT_THAT(out, ElementsAre(0x55, 3, 2, 1, 0x55, 6, 5, 4));
}

TEST(ReferenceColour, DividesDestinationBitsByThree) {
  const uint16_t image[3] = {4095, 16, 1024};
  uint8_t bytes[4] = {};
  uint16_t samples16[3] = {};
  const auto convert = [&](void* out, uint32_t format, uint32_t mode, uint32_t bits) {
    reference::ConvertToOutputFormat16(image, 1, 1, 12, out, format, mode, nullptr, 0, bits, 0);
  };
  convert(bytes, 3, 0, 32);  // ten bits per channel, clamped to a byte
  EXPECT_THAT(bytes, ElementsAre(0, 255, 4, 255));
  convert(samples16, 7, 0, 36);
  EXPECT_THAT(samples16, ElementsAre(4095, 16, 1024));
  convert(samples16, 7, 0, 48);
  EXPECT_THAT(samples16, Each(0));
  convert(samples16, 7, 5, 36);
  EXPECT_THAT(samples16, ElementsAre(2047, 8, 512));
}

TEST(ReferenceGray, LosesOneWhereTheProductsRoundDown) {
  const auto gray = [](uint8_t b, uint8_t g, uint8_t r) {
    const uint8_t image[3] = {b, g, r};
    uint8_t out = 77;
    reference::ConvertToOutputFormat8(image, 1, 1, &out, 5, 0, 0);
    return int{out};
  };
  EXPECT_EQ(gray(255, 255, 255), 255);
  EXPECT_EQ(gray(100, 100, 100), 100);
  EXPECT_EQ(gray(1, 1, 1), 0);
  EXPECT_EQ(gray(254, 254, 254), 253);
  EXPECT_EQ(gray(0, 0, 1), 0);
  EXPECT_EQ(gray(0, 2, 0), 1);
}

// At 1x1 rows are 3 * (2 + 4) samples apart, whatever the stride is: row 1 begins at sample 18.
TEST(ReferenceGray, StepsByAGuardedRowAtOneByOne) {
  std::vector<uint8_t> image(24, 0);
  for (unsigned k = 18; k < 21; ++k) image[k] = 100;
  uint8_t out[4] = {};
  reference::ConvertToOutputFormat8(image.data(), 2, 2, out, 5, 0, 0);
  EXPECT_THAT(out, ElementsAre(0, 0, 100, 0));
}

// Above 1x1 the rows of a block are a third of an image row apart.
TEST(ReferenceGray, StepsByThirdsOfARow) {
  std::vector<uint8_t> image(2 * 2 * 3, 0);
  for (unsigned k = 2; k < 8; ++k) image[k] = 100;  // samples 2..7 of row 0 and 1
  uint8_t out = 0;
  reference::ConvertToOutputFormat8(image.data(), 1, 1, &out, 5, 1, 0);
  // The block's rows begin at samples 0 and 2: blue 0, 3 / 2, 5; green 1, 4 / 3, 6; red 2, 5 /
  // 4, 7.
  EXPECT_EQ(out, static_cast<int>((150 * 0.587 + 200 * 0.299) + 150 * 0.114));
}

}  // namespace
