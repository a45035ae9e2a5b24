// Every value in every lane of every packing, against bits taken one by one.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/samples/places.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

using namespace packed;
using ::testing::ElementsAre;

struct PackedRow {
  const char* name;
  uint32_t packing, bits, lanes;
  PlaceOfBit place;
};
constexpr PackedRow kCases[] = {
    {"Bytes", VISTREL_PACKING_BYTES, 8, 1, inBytes},
    {"Little16", VISTREL_PACKING_LITTLE, 16, 1, inLittle},
    {"Little11", VISTREL_PACKING_LITTLE, 11, 1, inLittle},
    {"Big16", VISTREL_PACKING_BIG, 16, 1, inBig},
    {"Pfnc10", VISTREL_PACKING_PFNC, 10, 8, inPfnc<10>},
    {"Pfnc12", VISTREL_PACKING_PFNC, 12, 8, inPfnc<12>},
    {"Pfnc14", VISTREL_PACKING_PFNC, 14, 8, inPfnc<14>},
    {"Gige10", VISTREL_PACKING_GIGE, 10, 2, inGige<10>},
    {"Gige12", VISTREL_PACKING_GIGE, 12, 2, inGige<12>},
    {"Mipi10", VISTREL_PACKING_MIPI, 10, 4, inMipi<10, 4>},
    {"Mipi12", VISTREL_PACKING_MIPI, 12, 2, inMipi<12, 2>},
    {"Mipi14", VISTREL_PACKING_MIPI, 14, 4, inMipi<14, 4>},
};

void PrintTo(const PackedRow& c, std::ostream* out) { *out << c.name; }

vistrel_packed_layout packingLayoutOf(const vistrel_packed& packed) {
  vistrel_packed_layout layout{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, &error), VISTREL_OK) << error.text;
  return layout;
}

std::vector<uint16_t> unpack(const vistrel_packed& packed) {
  const vistrel_packed_layout layout = packingLayoutOf(packed);
  std::vector<uint8_t> raw(layout.unpacked_bytes);
  vistrel_error error{};
  EXPECT_EQ(vistrel_unpack(&packed, raw.data(), raw.size(), &error), VISTREL_OK) << error.text;
  if (layout.bytes_per_sample == 1) return {raw.begin(), raw.end()};
  std::vector<uint16_t> samples(raw.size() / 2);
  std::memcpy(samples.data(), raw.data(), raw.size());
  return samples;
}

struct Unpack : ::testing::TestWithParam<PackedRow> {
  const PackedRow& c = GetParam();
  const uint32_t values = 1u << c.bits;

  // Sets the bits of a row of samples, each in its place, in bytes that were zero.
  void pack(const std::vector<uint16_t>& samples, uint8_t* row) const {
    for (size_t i = 0; i < samples.size(); ++i)
      for (size_t b = 0; b < c.bits; ++b) {
        const size_t place = c.place(i, b, samples.size());
        row[place / 8] |= static_cast<uint8_t>((samples[i] >> b & 1) << place % 8);
      }
  }
};

// A row for each lane: that lane counts through all values while its neighbours hold others.
TEST_P(Unpack, EveryValueInEveryLane) {
  for (uint32_t lane = 0; lane < c.lanes; ++lane) {
    std::vector<uint16_t> samples;
    for (uint32_t i = 0; i < values * c.lanes; ++i)
      samples.push_back(
          static_cast<uint16_t>(i % c.lanes == lane ? i / c.lanes : i * 40503u % values));
    std::vector<uint8_t> bytes(2 * samples.size());
    pack(samples, bytes.data());
    const auto width = static_cast<uint32_t>(samples.size());
    ASSERT_EQ(unpack({bytes.data(), bytes.size(), 0, width, 1, c.packing, c.bits, 0, {}}), samples)
        << "lane " << lane;
  }
}

// A row takes the bytes up to its last bit; memory of just that size shows an over-read to the
// address sanitizer.
TEST_P(Unpack, EveryWidthTakesTheBytesOfItsLastBit) {
  for (uint32_t width = 1; width <= 20; ++width) {
    std::vector<uint16_t> samples;
    for (uint32_t i = 0; i < width; ++i)
      samples.push_back(static_cast<uint16_t>((i * 2654435761u >> 7) % values));
    size_t last = 0;
    for (size_t i = 0; i < width; ++i)
      for (size_t b = 0; b < c.bits; ++b) last = std::max(last, c.place(i, b, width));
    if (c.packing == VISTREL_PACKING_LITTLE) last |= 15;  // whole samples
    const vistrel_packed shape{nullptr, 0, 0, width, 1, c.packing, c.bits, 0, {}};
    ASSERT_EQ(packingLayoutOf(shape).row_bytes, last / 8 + 1) << width;
    std::vector<uint8_t> bytes(last / 8 + 1);
    pack(samples, bytes.data());
    EXPECT_EQ(unpack({bytes.data(), bytes.size(), 0, width, 1, c.packing, c.bits, 0, {}}), samples);
  }
}

TEST_P(Unpack, RowsBeginAtTheirStride) {
  const uint32_t width = 7, height = 3;
  vistrel_packed packed{nullptr, 0, 0, width, height, c.packing, c.bits, 0, {}};
  const size_t tight = packingLayoutOf(packed).row_bytes;
  for (const size_t stride : {tight, tight + 5}) {
    std::vector<uint8_t> bytes(stride * (height - 1) + tight);
    std::vector<uint16_t> all;
    for (uint32_t y = 0; y < height; ++y) {
      std::vector<uint16_t> row;
      for (uint32_t x = 0; x < width; ++x)
        row.push_back(static_cast<uint16_t>((y * 977 + x * 331) % values));
      pack(row, &bytes[y * stride]);
      all.insert(all.end(), row.begin(), row.end());
    }
    packed.bytes = bytes.data();
    packed.size = bytes.size();
    packed.stride = stride == tight ? 0 : stride;
    EXPECT_EQ(packingLayoutOf(packed).bytes, bytes.size());
    EXPECT_EQ(unpack(packed), all);
  }
}

TEST_P(Unpack, ContinuousRowsAreOneRow) {
  std::vector<uint16_t> samples;
  for (uint32_t i = 0; i < 7 * 5; ++i) samples.push_back(static_cast<uint16_t>(i * 613 % values));
  std::vector<uint8_t> bytes(2 * samples.size());
  pack(samples, bytes.data());
  EXPECT_EQ(unpack({bytes.data(), bytes.size(), 0, 7, 5, c.packing, c.bits, 1, {}}), samples);
}

INSTANTIATE_TEST_SUITE_P(Every, Unpack, ::testing::ValuesIn(kCases),
                         [](const auto& test) { return test.param.name; });

// By hand: 0x2AB and 0x155 of ten bits are 10101010 11 and 01010101 01.
TEST(UnpackByHand, TenBits) {
  const uint8_t gige[] = {0xAA, 0x13, 0x55}, mipi[] = {0xAA, 0x55, 0x00, 0xFF, 0xC7};
  const uint8_t pfnc[] = {0xAB, 0x56, 0x05, 0x00, 0x00};
  EXPECT_THAT(unpack({gige, 3, 0, 2, 1, VISTREL_PACKING_GIGE, 10, 0, {}}),
              ElementsAre(0x2AB, 0x155));
  EXPECT_THAT(unpack({mipi, 5, 0, 4, 1, VISTREL_PACKING_MIPI, 10, 0, {}}),
              ElementsAre(0x2AB, 0x155, 0x000, 0x3FF));
  EXPECT_THAT(unpack({pfnc, 5, 0, 4, 1, VISTREL_PACKING_PFNC, 10, 0, {}}),
              ElementsAre(0x2AB, 0x155, 0, 0));
}

}  // namespace
}  // namespace vistrel
