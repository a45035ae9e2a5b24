// Rows of finished pixels, written piece by piece.
#include "output/pixel_rows.h"

#include "tests/arena.h"
#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

// Each pixel four times.
void fourTimes(const void* pixels, size_t n, void* result) {
  for (size_t i = 0; i < 4 * n; ++i)
    static_cast<uint8_t*>(result)[i] = static_cast<const uint8_t*>(pixels)[i / 4];
}

struct PixelRowsTest : ::testing::TestWithParam<bool> {
  static constexpr size_t kWidth = 301, kStride = 1300, kRows = 3;
  const std::vector<uint8_t> pixels = noise<uint8_t>(4 * kWidth, 255, 3);
  std::vector<uint8_t> image = flat<uint8_t>(kStride * kRows, 0x55);
  Memory memory;

  InterleavedRows rows(size_t sourceBytes, PixelFunction convert) {
    return InterleavedRows({image.data(), kStride, GetParam()}, kWidth, sourceBytes, 4, convert,
                           memory);
  }
  // Writes row 1 in pieces, and expects it there and the rest unchanged.
  void expectRow(InterleavedRows rows, size_t sourceBytes, const std::vector<uint8_t>& row) {
    rows.begin(1);
    for (size_t at = 0; at < kWidth; at += 100)
      rows.append(pixels.data() + at * sourceBytes, std::min<size_t>(100, kWidth - at));
    rows.end();
    std::vector<uint8_t> expected = flat<uint8_t>(kStride * kRows, 0x55);
    std::copy(row.begin(), row.end(), expected.begin() + kStride);
    EXPECT_EQ(image, expected);
  }
};

TEST_P(PixelRowsTest, TakePixelsAsTheyAre) { expectRow(rows(4, nullptr), 4, pixels); }

TEST_P(PixelRowsTest, ConvertPixels) {
  std::vector<uint8_t> row(4 * kWidth);
  fourTimes(pixels.data(), kWidth, row.data());
  expectRow(rows(1, fourTimes), 1, row);
}

TEST_P(PixelRowsTest, LieInPlaceUnlessTheyChangeOrBypassTheCaches) {
  EXPECT_EQ(rows(4, nullptr).inPlace(2), GetParam() ? nullptr : image.data() + 2 * kStride);
  EXPECT_EQ(rows(1, fourTimes).inPlace(2), nullptr);
}

TEST_P(PixelRowsTest, OfSixteenBitSamplesLieInPlaceAtEvenAddressesOnly) {
  for (const size_t address : {0, 1}) {
    InterleavedRows rows({image.data() + address, kStride, GetParam()}, kWidth, 2, 2, nullptr,
                         memory);
    const bool isPossible = address == 0 && !GetParam();
    EXPECT_EQ(rows.inPlace(1), isPossible ? image.data() + kStride : nullptr);
    rows.begin(1);
    EXPECT_EQ(rows.next() != nullptr, address == 0 || GetParam());
  }
}

INSTANTIATE_TEST_SUITE_P(BypassingCaches, PixelRowsTest, ::testing::Bool());

}  // namespace
}  // namespace vistrel::core::test
