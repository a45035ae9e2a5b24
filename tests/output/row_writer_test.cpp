// Writing rows: how many bytes, from where, through which table.
#include "output/row_writer.h"

#include <numeric>

#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(RowWriting);

TEST(RowWriterSizes, FollowFromChannelsAndDepth) {
  const auto bytes = [](Pack pack, Depth depth) {
    return RowWriter(pack, depth, 2, 100, 5, {0, 255}).pixelBytes();
  };
  EXPECT_EQ(bytes(Pack::mono, Depth::from8to8), 1u);
  EXPECT_EQ(bytes(Pack::gray, Depth::from16to16), 2u);
  EXPECT_EQ(bytes(Pack::bgr, Depth::from16to8), 3u);
  EXPECT_EQ(bytes(Pack::bgr, Depth::from16to16), 6u);
  EXPECT_EQ(bytes(Pack::argb, Depth::from16to8), 4u);
  EXPECT_EQ(RowWriter(Pack::bgr, Depth::from16to16, 2, 100, 5, {0, 65535}).rowBytes(), 30u);
}

TEST(RowWriterCopies, OnlySamplesThatStayAsTheyAre) {
  const auto copies = [](Pack pack, Depth depth, unsigned binning, Reduction reduction) {
    return RowWriter(pack, depth, binning, 100, 5, reduction).copies();
  };
  EXPECT_TRUE(copies(Pack::mono, Depth::from8to8, 1, {0, 255}));
  EXPECT_TRUE(copies(Pack::bgr, Depth::from16to16, 1, {0, 65535}));
  EXPECT_FALSE(copies(Pack::bgr, Depth::from16to8, 1, {0, 255}));
  EXPECT_FALSE(copies(Pack::bgr, Depth::from16to16, 1, {0, 4095}));
  EXPECT_FALSE(copies(Pack::bgr, Depth::from16to16, 1, {1, 65535}));
  EXPECT_FALSE(copies(Pack::bgr, Depth::from8to8, 2, {0, 255}));
  EXPECT_FALSE(copies(Pack::argb, Depth::from8to8, 1, {0, 255}));
  EXPECT_FALSE(copies(Pack::gray, Depth::from8to8, 1, {0, 255}));
  const std::vector<uint8_t> table(1024);
  EXPECT_FALSE(RowWriter(Pack::mono, 1, 100, 5, table.data(), 0).copies());
}

TEST(RowWriterWithoutKernel, WritesNothing) {
  const std::vector<uint8_t> source(100);
  Canvas<uint8_t> canvas(100);
  RowWriter().rows(source.data(), canvas.data(), 4);
  EXPECT_TRUE(canvas.untouched());
}

TEST_P(RowWriting, PartWritesThatManyPixels) {
  const std::vector<uint8_t> source = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  Canvas<uint8_t> canvas(9);
  RowWriter(Pack::bgr, Depth::from8to8, 1, 9, 3, {0, 255}).part(source.data(), canvas.data(), 2);
  constexpr uint8_t kPreset = Canvas<uint8_t>::kPreset;
  EXPECT_THAT(canvas.samples(), ElementsAre(1, 2, 3, 4, 5, 6, kPreset, kPreset, kPreset));
}

// Two rows of 2x2 blocks, whose sums are divided by two. The last sample of a row is in none.
TEST_P(RowWriting, RowsBeginAfterAsManySourceRowsAsTheBinning) {
  const std::vector<uint16_t> source = {4,  4,  8,  8,  99,   // shifted by two: 1, 1, 2, 2
                                        4,  4,  8,  8,  99,   //
                                        40, 40, 80, 83, 99,   // 10, 10, 20, 20
                                        40, 40, 80, 83, 99};  //
  Canvas<uint8_t> canvas(4);
  RowWriter(Pack::mono, Depth::from16to8, 2, 5, 2, {2, 30}).rows(source.data(), canvas.data(), 2);
  EXPECT_THAT(canvas.samples(), ElementsAre(2, 4, 20, 30));  // 40 is above the ceiling
}

// More pixels than are mapped at a time: sample i, of 12 bits, takes entry i >> 2.
TEST_P(RowWriting, EverySampleGoesThroughTheTable) {
  constexpr size_t kWidth = 1365, kSamples = 3 * kWidth;
  std::vector<uint8_t> table(1024);
  for (size_t i = 0; i < table.size(); ++i) table[i] = static_cast<uint8_t>(7 * i);
  std::vector<uint16_t> source(kSamples);
  std::iota(source.begin(), source.end(), uint16_t{0});
  Canvas<uint8_t> canvas(kSamples);
  RowWriter(Pack::bgr, 1, kSamples, kWidth, table.data(), 2).rows(source.data(), canvas.data(), 1);
  const auto result = canvas.samples();
  for (size_t i = 0; i < kSamples; ++i)
    ASSERT_EQ(result[i], static_cast<uint8_t>(7 * (i >> 2))) << i;
}

TEST_P(RowWriting, ShiftsOfTheTableCountModulo32) {
  std::vector<uint8_t> table(1024);
  table[5] = 77;
  const std::vector<uint16_t> source = {5, 6};
  Canvas<uint8_t> canvas(2);
  RowWriter(Pack::mono, 1, 2, 2, table.data(), 32).rows(source.data(), canvas.data(), 1);
  EXPECT_THAT(canvas.samples(), ElementsAre(77, 0));
}

}  // namespace
}  // namespace vistrel::core::test
