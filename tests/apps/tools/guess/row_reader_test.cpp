#include "apps/tools/guess/row_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

constexpr app::Packing kBytes{VISTREL_PACKING_BYTES, 8, 8}, kTwelve{VISTREL_PACKING_PFNC, 12, 12};

std::vector<uint16_t> read(app::RowReader& reader, size_t y, uint32_t first, uint32_t count) {
  std::vector<uint16_t> samples(count);
  reader.read(y, first, count, samples.data());
  return samples;
}

TEST(RowReader, AllPackingsHaveTheBitsOfTheirGroups) {
  const auto all = app::allPackings();
  EXPECT_EQ(all.size(), 11u);
  for (const app::Packing& p : all)
    EXPECT_EQ(p.stored, p.code == VISTREL_PACKING_GIGE ? 12 : p.bits);
}

TEST(RowReader, RowsEndWithAWholeByte) {
  EXPECT_EQ(app::rowBytesOf(kTwelve, 3), 5u);
  EXPECT_EQ(app::widthOf(kTwelve, 5), 3u);
  EXPECT_EQ(app::bytesPerRow({kTwelve, 3, 0, 0}), 4.5);
}

// A byte to skip; rows of two samples in three bytes and one of padding, which the last row lacks.
TEST(RowReader, PaddedRows) {
  const std::vector<uint8_t> bytes{9, 0x23, 0x61, 0x45, 9, 0xBC, 0xFA, 0xDE};
  app::RowReader reader(bytes, {kTwelve, 2, 4, 1});
  EXPECT_EQ(reader.rows(), 2u);
  EXPECT_EQ(read(reader, 0, 0, 2), (std::vector<uint16_t>{0x123, 0x456}));
  EXPECT_EQ(read(reader, 1, 1, 1), (std::vector<uint16_t>{0xDEF}));
}

// Three rows of three samples, in which the sample at column x of row y is 16 y + x.
TEST(RowReader, ContinuousRows) {
  const std::vector<uint8_t> bytes{0x00, 0x10, 0x00, 0x02, 0x00, 0x01, 0x11,
                                   0x20, 0x01, 0x20, 0x10, 0x02, 0x22, 0x00};
  app::RowReader reader(bytes, {kTwelve, 3, 0, 0});
  EXPECT_EQ(reader.rows(), 3u);
  EXPECT_EQ(read(reader, 1, 0, 3), (std::vector<uint16_t>{16, 17, 18}));
  EXPECT_EQ(read(reader, 2, 2, 1), (std::vector<uint16_t>{34}));
}

TEST(RowReader, TooFewBytesAreNoRows) {
  const std::vector<uint8_t> bytes(9);
  EXPECT_EQ(app::RowReader(bytes, {kBytes, 10, 10, 0}).rows(), 0u);
  EXPECT_EQ(app::RowReader(bytes, {kBytes, 4, 4, 20}).rows(), 0u);
}

}  // namespace
}  // namespace vistrel
