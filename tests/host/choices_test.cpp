// Gray, reduced samples and tables: results that can be told by hand.
#include <gmock/gmock.h>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::ElementsAre;

TEST(Gray, IsLumaOfTheColours) {
  const auto samples = samplesOf<uint16_t>(9, 7, plainColour(VISTREL_GRBG, 301, 702, 1000));
  const vistrel_frame frame = frameOf(samples.data(), 9, 7, 10, VISTREL_GRBG);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_GRAY16;
  // 0.114 * 301 + 0.587 * 702 + 0.299 * 1000 = 745.388
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(745));
  EXPECT_EQ(layoutOf(frame, c).channels, 1u);
  EXPECT_EQ(layoutOf(frame, c).bits, 10u);
  c.format = VISTREL_GRAY8;  // of 75, 175 and 250: 186.025
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(186));
  c.binning = 2;  // of 150, 255 and 255
  EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(243));
}

// What the library's own gray loses, at 128 for one.
TEST(Gray, KeepsEqualChannelsUnlessRaw) {
  for (const uint32_t v : {0u, 1u, 100u, 128u, 254u, 255u}) {
    const std::vector<uint8_t> samples(6 * 6, static_cast<uint8_t>(v));
    const vistrel_frame frame = frameOf(samples.data(), 6, 6, VISTREL_BGGR);
    vistrel_conversion c = defaultConversion(frame);
    c.format = VISTREL_GRAY8;
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(v));
    c.gray = VISTREL_RAW_GRAY;
    const bool loses = v == 1 || v == 128 || v == 254;
    EXPECT_THAT(plainPixel(convert(frame, c)), ElementsAre(v - loses));
  }
}

TEST(Reduction, DropsTheLowestBitsFirst) {
  const auto samples =
      samplesOf<uint16_t>(12, 10, [](uint32_t x, uint32_t y) { return 300 * y + 41 * x; });
  auto tenBits = samples;
  for (auto& s : tenBits) s = static_cast<uint16_t>(s >> 2);
  const vistrel_frame frame = frameOf(samples.data(), 12, 10, 12, VISTREL_RGGB);
  const vistrel_frame reduced = frameOf(tenBits.data(), 12, 10, 10, VISTREL_RGGB);
  for (const uint32_t format : {VISTREL_BGR24, VISTREL_BGR48}) {
    vistrel_conversion c = defaultConversion(frame);
    c.algorithm = VISTREL_LAROCHE;
    c.format = format;
    const Image expected = convert(reduced, c);
    c.truncate_to = 10;
    EXPECT_EQ(convert(frame, c).pixels, expected.pixels);
    EXPECT_EQ(convert(frame, c).layout.bits, expected.layout.bits);
    EXPECT_EQ(convert(reduced, c).pixels, expected.pixels);
  }
}

TEST(Reduction, LooksForExcessBitsBefore) {
  const std::vector<uint16_t> samples{0x1ABC, 0x0ABC, 0x0, 0x3};
  const vistrel_frame frame = frameOf(samples.data(), 4, 1, 12, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  c.truncate_to = 9;
  EXPECT_THROW(convert(frame, c), Error);
  c.excess = VISTREL_MASK;
  EXPECT_THAT(wordsOf(convert(frame, c)), ElementsAre(0x157, 0x157, 0, 0));
}

// Entry k of 1024, or entries 4k of 4096, for what the highest ten bits are k of.
TEST(Table, MapsTheHighestTenBits) {
  const std::vector<uint16_t> samples{0, 3, 4, 2000, 2003, 4095};
  const vistrel_frame frame = frameOf(samples.data(), 6, 1, 12, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.reduction = 10;
  std::vector<uint16_t> table(1024, 7);
  table[0] = 255, table[1] = 9, table[500] = 100, table[1023] = 3;
  c.table = table.data();
  c.table_entries = 1024;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(255, 255, 9, 100, 100, 3));
  std::vector<uint16_t> longTable(4096, 7);
  longTable[0] = 1, longTable[4] = 2, longTable[2000] = 5, longTable[4092] = 4;
  c.table = longTable.data();
  c.table_entries = 4096;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(1, 1, 2, 5, 5, 4));
}

TEST(Table, IsOfThisCallAlone) {
  const std::vector<uint16_t> samples(8 * 8, 600), light(1024, 200), dark(1024, 20);
  const vistrel_frame frame = frameOf(samples.data(), 8, 8, 10, VISTREL_GBRG);
  vistrel_conversion c = defaultConversion(frame);
  c.reduction = 10;
  c.table_entries = 1024;
  for (const auto* table : {&light, &dark, &light}) {
    c.table = table->data();
    EXPECT_THAT(plainPixel(convert(frame, c)),
                ElementsAre(table->at(0), table->at(0), table->at(0)));
  }
}

}  // namespace
}  // namespace vistrel
