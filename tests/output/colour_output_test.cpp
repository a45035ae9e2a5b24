// What a conversion can tell of itself before it runs, and rows that it writes piece by piece.
#include "output/colour_output.h"

#include "tests/frames.h"
#include "tests/levels.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;

VISTREL_LEVEL_SUITE(ColourOutputAt);

constexpr uint32_t kColumns = 60;

// Of 8-bit images, and of 12-bit ones with twelve bits a channel.
ColourOutput of8(uint32_t nFormat, uint32_t nBinning, bool guarded) {
  return {kColumns, nFormat, nBinning, guarded};
}
ColourOutput of16(uint32_t nFormat, uint32_t nBinning, bool guarded, uint32_t nSrcBits = 12,
                  uint32_t nDstBits = 36) {
  return {kColumns, nSrcBits, nFormat, 0, nullptr, nBinning, nDstBits, guarded};
}

constexpr uint32_t kColours8[] = {IMG_FMT_BGR24, IMG_FMT_ARGB32, IMG_FMT_ARGB32_4};

TEST(ColourOutput, ColourRowsFollowTheImagesRows) {
  for (bool guarded : {false, true})
    for (uint32_t nBinning = 0; nBinning < 4; ++nBinning) {
      for (uint32_t nFormat : kColours8) {
        EXPECT_TRUE(of8(nFormat, nBinning, guarded).followsRows());
        EXPECT_TRUE(of16(nFormat, nBinning, guarded).followsRows());
      }
      EXPECT_TRUE(of16(IMG_FMT_BGR48, nBinning, guarded).followsRows());
    }
}

// quirk: gray-stride. Gray rows are read where the image has its rows in one case alone.
TEST(ColourOutput, GrayRowsFollowOnlyThoseOfAGuardedImageAt1x1) {
  for (bool guarded : {false, true})
    for (uint32_t nBinning = 0; nBinning < 4; ++nBinning) {
      const bool follows = guarded && nBinning == 0;
      EXPECT_EQ(of8(IMG_FMT_GRAY8, nBinning, guarded).followsRows(), follows);
      EXPECT_EQ(of16(IMG_FMT_GRAY8, nBinning, guarded).followsRows(), follows);
      EXPECT_EQ(of16(IMG_FMT_GRAY16, nBinning, guarded).followsRows(), follows);
    }
}

TEST(ColourOutput, CopiesRowsThatStayAsTheyAre) {
  EXPECT_TRUE(of8(IMG_FMT_BGR24, 0, false).copiesRows());
  EXPECT_TRUE(of8(IMG_FMT_BGR24, 0, true).copiesRows());
  EXPECT_TRUE(of16(IMG_FMT_BGR48, 0, true, 16, 48).copiesRows());
  EXPECT_FALSE(of16(IMG_FMT_BGR48, 0, true, 12, 36).copiesRows());  // clamped to twelve bits
  EXPECT_FALSE(of16(IMG_FMT_BGR48, 0, true, 16, 45).copiesRows());  // shifted
  EXPECT_FALSE(of16(IMG_FMT_BGR24, 0, true, 8, 24).copiesRows());
  EXPECT_FALSE(of8(IMG_FMT_BGR24, 1, true).copiesRows());
  EXPECT_FALSE(of8(IMG_FMT_ARGB32, 0, true).copiesRows());
  EXPECT_FALSE(of8(IMG_FMT_GRAY8, 0, true).copiesRows());
}

TEST(ColourOutput, LeavesBytesToTheCallerInArgbAlone) {
  for (uint32_t nFormat : {IMG_FMT_ARGB32, IMG_FMT_ARGB32_4}) {
    EXPECT_FALSE(of8(nFormat, 0, true).writesEveryByte());
    EXPECT_FALSE(of16(nFormat, 1, false).writesEveryByte());
  }
  for (uint32_t nFormat : {IMG_FMT_BGR24, IMG_FMT_GRAY8}) {
    EXPECT_TRUE(of8(nFormat, 0, true).writesEveryByte());
    EXPECT_TRUE(of16(nFormat, 1, false).writesEveryByte());
  }
  EXPECT_TRUE(of16(IMG_FMT_BGR48, 0, true).writesEveryByte());
  EXPECT_TRUE(of16(IMG_FMT_GRAY16, 0, true).writesEveryByte());
}

TEST(ColourOutput, HasTheFormatsPixels) {
  const std::pair<uint32_t, size_t> formats[] = {{IMG_FMT_BGR24, 3},    {IMG_FMT_ARGB32, 4},
                                                 {IMG_FMT_ARGB32_4, 4}, {IMG_FMT_GRAY8, 1},
                                                 {IMG_FMT_GRAY16, 2},   {IMG_FMT_BGR48, 6}};
  for (const auto& [nFormat, bytes] : formats)
    for (uint32_t nBinning = 0; nBinning < 4; ++nBinning) {
      EXPECT_EQ(of16(nFormat, nBinning, true).pixelBytes(), bytes) << nFormat;
      EXPECT_EQ(of16(nFormat, nBinning, true).rowBytes(), bytes * kColumns) << nFormat;
      if (nFormat == IMG_FMT_GRAY16 || nFormat == IMG_FMT_BGR48) continue;
      EXPECT_EQ(of8(nFormat, nBinning, true).pixelBytes(), bytes) << nFormat;
      EXPECT_EQ(of8(nFormat, nBinning, true).rowBytes(), bytes * kColumns) << nFormat;
    }
}

TEST(ColourOutput, OfAnUnknownFormatOrBinningFollowsNoRows) {
  for (uint32_t nFormat : {0u, 1u, 8u, 0xFFFFFFFFu}) {
    EXPECT_FALSE(of8(nFormat, 0, true).followsRows());
    EXPECT_FALSE(of16(nFormat, 0, true).followsRows());
  }
  EXPECT_FALSE(of8(IMG_FMT_GRAY16, 0, true).followsRows());  // of 16-bit samples alone
  EXPECT_FALSE(of8(IMG_FMT_BGR48, 0, true).followsRows());
  EXPECT_FALSE(of8(IMG_FMT_BGR24, 4, true).followsRows());
  EXPECT_FALSE(of16(IMG_FMT_BGR24, 4, true).followsRows());
}

// A row of 2x2 blocks in two parts. Both rows of a block are alike, so that a pixel is the sum of
// a channel's two neighbours.
TEST_P(ColourOutputAt, WritesPartsOfARow) {
  const auto half = noise<uint8_t>(6 * kColumns, 100, 1);
  std::vector<uint8_t> image = half;
  image.insert(image.end(), half.begin(), half.end());
  const ColourOutput output = of8(IMG_FMT_BGR24, 1, false);
  Canvas<uint8_t> canvas(3 * kColumns);
  output.part(image.data(), canvas.data(), 17);
  for (size_t i = 17 * 3; i < 3 * kColumns; ++i)
    ASSERT_EQ(canvas.samples()[i], Canvas<uint8_t>::kPreset);
  output.part(&image[17 * 6], canvas.data() + 17 * 3, kColumns - 17);
  for (size_t i = 0; i < 3 * kColumns; ++i)
    ASSERT_EQ(canvas.samples()[i], half[i / 3 * 6 + i % 3] + half[i / 3 * 6 + 3 + i % 3]) << i;
}

TEST_P(ColourOutputAt, ConvertsFromTheFirstPixelInsideTheGuard) {
  const size_t row = 3 * (kColumns + 4);
  std::vector<uint8_t> image(row * 7, 9);
  for (size_t y = 2; y < 5; ++y)
    for (size_t i = 6; i < row - 6; ++i) image[y * row + i] = 200;
  Canvas<uint8_t> canvas(3 * 3 * kColumns);
  of8(IMG_FMT_BGR24, 0, true).convert(image.data(), canvas.data(), 3);
  EXPECT_THAT(canvas.samples(), Each(200));
}

}  // namespace
}  // namespace vistrel::core::test
