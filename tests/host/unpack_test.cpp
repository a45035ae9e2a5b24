// Every value in every lane of every packing, against bits taken one by one.
#include <gmock/gmock.h>

#include <cstring>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

// Where bit b of sample i lies in a row of `width` samples, counted from bit 0 of byte 0.
using PlaceOfBit = size_t (*)(size_t i, size_t b, size_t width);

size_t inBytes(size_t i, size_t b, size_t) { return 8 * i + b; }
size_t inLittle(size_t i, size_t b, size_t) { return 16 * i + b; }
size_t inBig(size_t i, size_t b, size_t) { return 16 * i + (b + 8) % 16; }
template <size_t kBits>
size_t inPfnc(size_t i, size_t b, size_t) {
  return kBits * i + b;
}
template <size_t kBits>
size_t inGige(size_t i, size_t b, size_t) {
  constexpr size_t kLow = kBits - 8;
  const size_t group = 24 * (i / 2), second = i % 2;
  return group + (b < kLow ? 8 + 4 * second + b : 16 * second + b - kLow);
}
template <size_t kBits, size_t kGroup>
size_t inMipi(size_t i, size_t b, size_t width) {
  constexpr size_t kLow = kBits - 8;
  const size_t first = i / kGroup * kGroup, lane = i - first;
  const size_t lanes = std::min(kGroup, width - first);
  return kBits * first + (b < kLow ? 8 * lanes + kLow * lane + b : 8 * lane + b - kLow);
}

struct Case {
  const char* name;
  uint32_t packing, bits, lanes;
  PlaceOfBit place;
};
constexpr Case kCases[] = {
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

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

vistrel_packed_layout layoutOf(const vistrel_packed& packed) {
  vistrel_packed_layout layout{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, &error), VISTREL_OK) << error.text;
  return layout;
}

std::vector<uint16_t> unpack(const vistrel_packed& packed) {
  const vistrel_packed_layout layout = layoutOf(packed);
  std::vector<uint8_t> raw(layout.unpacked_bytes);
  vistrel_error error{};
  EXPECT_EQ(vistrel_unpack(&packed, raw.data(), raw.size(), &error), VISTREL_OK) << error.text;
  if (layout.bytes_per_sample == 1) return {raw.begin(), raw.end()};
  std::vector<uint16_t> words(raw.size() / 2);
  std::memcpy(words.data(), raw.data(), raw.size());
  return words;
}

struct Unpack : ::testing::TestWithParam<Case> {
  const Case& c = GetParam();
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

// The bytes a row needs end with its last bit; memory of just that size shows an over-read to
// the address sanitizer.
TEST_P(Unpack, EveryWidthTakesTheBytesOfItsLastBit) {
  for (uint32_t width = 1; width <= 20; ++width) {
    std::vector<uint16_t> samples;
    for (uint32_t i = 0; i < width; ++i)
      samples.push_back(static_cast<uint16_t>((i * 2654435761u >> 7) % values));
    size_t last = 0;
    for (size_t i = 0; i < width; ++i)
      for (size_t b = 0; b < c.bits; ++b) last = std::max(last, c.place(i, b, width));
    if (c.packing == VISTREL_PACKING_LITTLE) last |= 15;  // whole words
    const vistrel_packed shape{nullptr, 0, 0, width, 1, c.packing, c.bits, 0, {}};
    ASSERT_EQ(layoutOf(shape).row_bytes, last / 8 + 1) << width;
    std::vector<uint8_t> bytes(last / 8 + 1);
    pack(samples, bytes.data());
    EXPECT_EQ(unpack({bytes.data(), bytes.size(), 0, width, 1, c.packing, c.bits, 0, {}}), samples);
  }
}

TEST_P(Unpack, RowsBeginAtTheirStride) {
  constexpr uint32_t kWidth = 7, kHeight = 3;
  vistrel_packed packed{nullptr, 0, 0, kWidth, kHeight, c.packing, c.bits, 0, {}};
  const size_t tight = layoutOf(packed).row_bytes;
  for (const size_t stride : {tight, tight + 5}) {
    std::vector<uint8_t> bytes(stride * (kHeight - 1) + tight);
    std::vector<uint16_t> all;
    for (uint32_t y = 0; y < kHeight; ++y) {
      std::vector<uint16_t> row;
      for (uint32_t x = 0; x < kWidth; ++x)
        row.push_back(static_cast<uint16_t>((y * 977 + x * 331) % values));
      pack(row, &bytes[y * stride]);
      all.insert(all.end(), row.begin(), row.end());
    }
    packed.bytes = bytes.data();
    packed.size = bytes.size();
    packed.stride = stride == tight ? 0 : stride;
    EXPECT_EQ(layoutOf(packed).bytes, bytes.size());
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

// Worked out by hand: 0x2AB and 0x155 of ten bits are 10101010 11 and 01010101 01.
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

struct UnpackRefusal : ::testing::Test {
  std::vector<uint8_t> bytes = std::vector<uint8_t>(3 * 4, 0x5A);
  std::vector<uint8_t> samples = std::vector<uint8_t>(2 * 2 * 4, 77);
  vistrel_packed packed{bytes.data(), bytes.size(), 0, 2, 4, VISTREL_PACKING_GIGE, 12, 0, {}};
  size_t size = samples.size();

  void expect(int32_t status, const char* text) {
    vistrel_error error{};
    EXPECT_EQ(vistrel_unpack(&packed, samples.data(), size, &error), status);
    EXPECT_EQ(error.status, status);
    EXPECT_STREQ(error.text, text);
    if (status) {
      EXPECT_THAT(samples, Each(77));
    }
  }
};

TEST_F(UnpackRefusal, NoneForWhatIsThere) { expect(VISTREL_OK, ""); }

TEST_F(UnpackRefusal, Shapes) {
  packed.width = 0;
  expect(VISTREL_BAD_SIZE, "width 0: a dump has 1 column or more");
  packed.width = 2, packed.height = 0;
  expect(VISTREL_BAD_SIZE, "height 0: a dump has 1 row or more");
  packed.height = 4, packed.stride = 2;
  expect(VISTREL_BAD_STRIDE, "stride 2: a row of 2 samples has 3 bytes");
  packed.stride = 3, packed.continuous = 1;
  expect(VISTREL_BAD_STRIDE, "stride 3: a continuous dump has no stride; 0 is allowed");
  packed.continuous = 2;
  expect(VISTREL_BAD_STRIDE, "continuous 2: 0 and 1 are allowed");
  packed.continuous = 0, packed.reserved[1] = 9;
  expect(VISTREL_BAD_RESERVED, "packed->reserved[1] 9: 0 is allowed, this version knows no other");
}

TEST_F(UnpackRefusal, PackingAndBits) {
  packed.packing = 6;
  expect(VISTREL_BAD_PACKING,
         "packing 6: allowed are BYTES (0), LITTLE (1), BIG (2), PFNC (3), GIGE (4), MIPI (5)");
  packed.packing = VISTREL_PACKING_MIPI, packed.bits = 11;
  expect(VISTREL_BAD_BITS, "bits 11: packing MIPI allows 10, 12, 14");
  packed.packing = VISTREL_PACKING_GIGE, packed.bits = 14;
  expect(VISTREL_BAD_BITS, "bits 14: packing GIGE allows 10, 12");
  packed.packing = VISTREL_PACKING_BYTES;
  expect(VISTREL_BAD_BITS, "bits 14: packing BYTES allows 8");
  packed.packing = VISTREL_PACKING_BIG, packed.bits = 17;
  expect(VISTREL_BAD_BITS, "bits 17: packing BIG allows 8 to 16");
}

TEST_F(UnpackRefusal, Memory) {
  packed.size = 11;
  expect(VISTREL_SHORT_BUFFER, "packed->size 11: 4 rows of 3 bytes, stride 3, take 12 bytes");
  packed.size = 12, size = 15;
  expect(VISTREL_SHORT_BUFFER, "size 15: 2x4 samples take 16 bytes");
  packed.bytes = nullptr;
  expect(VISTREL_NULL_POINTER, "packed->bytes is null");
  packed.bytes = samples.data() + 15, size = 16;
  expect(VISTREL_OVERLAP, "samples: they overlap the packed bytes");
  vistrel_error error{};
  packed.bytes = bytes.data();
  EXPECT_EQ(vistrel_unpack(&packed, nullptr, 16, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "samples is null");
  EXPECT_EQ(vistrel_unpack(nullptr, samples.data(), 16, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "packed is null");
  EXPECT_EQ(vistrel_get_packed_layout(&packed, nullptr, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "layout is null");
}

// 65536 x 65536 samples of 12 bits are 6 GiB; the largest size passes half the address space.
TEST(UnpackSizes, AreCountedInSixtyFourBits) {
  vistrel_packed packed{nullptr, 0, 0, 65536, 65536, VISTREL_PACKING_PFNC, 12, 0, {}};
  if (sizeof(size_t) < 8) GTEST_SKIP() << "no such memory on this machine";
  EXPECT_EQ(layoutOf(packed).bytes, size_t{6} << 30);
  EXPECT_EQ(layoutOf(packed).unpacked_bytes, size_t{8} << 30);
  packed.continuous = 1;
  EXPECT_EQ(layoutOf(packed).row_bytes, size_t{6} << 30);
  vistrel_packed_layout layout{};
  vistrel_error error{};
  packed.width = packed.height = 0xFFFFFFFF;
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, &error), VISTREL_TOO_LARGE);
  EXPECT_STREQ(error.text,
               "dump of 4294967295x4294967295 pixels, stride 0: no memory is that large");
  packed = {nullptr, 0, SIZE_MAX / 2, 2, 3, VISTREL_PACKING_PFNC, 12, 0, {}};
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, &error), VISTREL_TOO_LARGE);
}

}  // namespace
}  // namespace vistrel
