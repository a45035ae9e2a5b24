// Packed frames, against frames that vistrel_unpack has unpacked.
#include <gtest/gtest.h>

#include <random>

#include "tests/host/frames.h"
#include "tests/host/guarded.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

struct Packing {
  const char* name;
  uint32_t packing, bits, alignment;
};
constexpr Packing kPackings[] = {
    {"Little12", VISTREL_PACKING_LITTLE, 12, VISTREL_LOW_BITS},
    {"Little16", VISTREL_PACKING_LITTLE, 16, VISTREL_LOW_BITS},
    {"Big8", VISTREL_PACKING_BIG, 8, VISTREL_LOW_BITS},
    {"Big12", VISTREL_PACKING_BIG, 12, VISTREL_LOW_BITS},
    {"Big12High", VISTREL_PACKING_BIG, 12, VISTREL_HIGH_BITS},
    {"Pfnc10", VISTREL_PACKING_PFNC, 10, VISTREL_LOW_BITS},
    {"Pfnc12", VISTREL_PACKING_PFNC, 12, VISTREL_LOW_BITS},
    {"Pfnc14", VISTREL_PACKING_PFNC, 14, VISTREL_LOW_BITS},
    {"Gige10", VISTREL_PACKING_GIGE, 10, VISTREL_LOW_BITS},
    {"Gige12", VISTREL_PACKING_GIGE, 12, VISTREL_LOW_BITS},
    {"Mipi10", VISTREL_PACKING_MIPI, 10, VISTREL_LOW_BITS},
    {"Mipi12", VISTREL_PACKING_MIPI, 12, VISTREL_LOW_BITS},
    {"Mipi14", VISTREL_PACKING_MIPI, 14, VISTREL_LOW_BITS},
};
void PrintTo(const Packing& p, std::ostream* out) { *out << p.name; }

struct PackedFrame : ::testing::TestWithParam<Packing> {
  const Packing& p = GetParam();
  Guarded memory{size_t{1} << 16};
  std::vector<uint8_t> unpacked;
  vistrel_frame packedFrame{}, plainFrame{};

  // A frame of random bytes, and the same unpacked.
  void make(uint32_t width, uint32_t height, size_t padding, uint32_t phase) {
    vistrel_packed packed{nullptr, 0, 0, width, height, p.packing, p.bits, 0, {}};
    vistrel_packed_layout layout{};
    ASSERT_EQ(vistrel_get_packed_layout(&packed, &layout, nullptr), VISTREL_OK);
    const size_t stride = layout.row_bytes + padding;
    std::mt19937 random(width * height + p.bits);
    std::vector<uint8_t> bytes(stride * (height - 1) + layout.row_bytes);
    for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random() >> 7);
    packed.bytes = memory.place(bytes);
    packed.size = bytes.size();
    packed.stride = padding ? stride : 0;
    unpacked.resize(layout.unpacked_bytes);
    ASSERT_EQ(vistrel_unpack(&packed, unpacked.data(), unpacked.size(), nullptr), VISTREL_OK);
    packedFrame = {packed.bytes, packed.size, packed.stride, width,     height, 2,
                   p.bits,       phase,       p.alignment,   p.packing, {}};
    plainFrame = packedFrame;
    plainFrame.packing = 0;
    plainFrame.stride = 0;
    plainFrame.samples = unpacked.data();
    plainFrame.size = unpacked.size();
  }

  vistrel_conversion conversion(uint32_t format) const {
    vistrel_conversion c = defaultConversion(plainFrame);
    c.format = format;
    c.excess = VISTREL_MASK;
    return c;
  }

  void expectSame(const vistrel_conversion& c) {
    const Image expected = convert(plainFrame, c), image = convert(packedFrame, c);
    ASSERT_EQ(image.layout.frame_bytes, packedFrame.size);
    ASSERT_TRUE(image.pixels == expected.pixels)
        << plainFrame.width << 'x' << plainFrame.height << ", format " << c.format << ", binning "
        << c.binning << ", edges " << c.edges << ", black " << c.black[0];
  }
};
INSTANTIATE_TEST_SUITE_P(Of, PackedFrame, ::testing::ValuesIn(kPackings),
                         ::testing::PrintToStringParamName());

// Every preparation, with native and padded edges.
void forAllOptions(vistrel_conversion c, const std::function<void(const vistrel_conversion&)>& f) {
  for (const uint32_t edges : {VISTREL_EDGES_NATIVE, VISTREL_EDGES_PADDED})
    for (const uint32_t black : {0u, 37u})
      for (const uint32_t balance : {VISTREL_BALANCE_NONE, VISTREL_BALANCE_GRAY_WORLD}) {
        c.edges = edges, c.white_balance = balance;
        setBlack(c, black);
        f(c);
      }
}

TEST_P(PackedFrame, GivesTheImageOfTheUnpackedOne) {
  for (size_t level = 0; vistrel_level_name(level); ++level) {
    ASSERT_EQ(vistrel_set_level(level, nullptr), VISTREL_OK);
    for (const uint32_t width : {2, 3, 8, 17, 31, 64, 77, 130}) {
      make(width, 13, width % 3 * 5, VISTREL_GBRG);
      forAllOptions(conversion(VISTREL_BGR48), [&](const auto& c) { expectSame(c); });
    }
  }
}

TEST_P(PackedFrame, AllowsEveryRegion) {
  make(61, 20, 0, VISTREL_RGGB);
  for (const uint32_t x : {0, 1, 2, 7, 8, 13})
    for (const uint32_t width : {2, 5, 8, 19, 48}) {
      vistrel_conversion c = conversion(VISTREL_BGR48);
      c.region = {x, 3, width, 14};
      forAllOptions(c, [&](const auto& with) { expectSame(with); });
    }
}

TEST_P(PackedFrame, GoesWithEveryFormatBinningAndTruncation) {
  make(45, 38, 3, VISTREL_GRBG);
  for (size_t i = 0; const vistrel_format* format = vistrel_format_at(i); ++i)
    for (uint32_t binning = 1; binning <= 4; ++binning) {
      vistrel_conversion c = conversion(format->code);
      if (format->mono) continue;
      c.binning = binning;
      c.truncate_to = binning == 2 ? 8 : 0;
      expectSame(c);
    }
}

TEST_P(PackedFrame, MayBeMono) {
  make(45, 8, 1, VISTREL_MONO);
  expectSame(conversion(VISTREL_MONO8));
  expectSame(conversion(VISTREL_MONO16));
}

TEST_P(PackedFrame, HasTheSameGains) {
  make(4999, 5, 1, VISTREL_BGGR);
  vistrel_conversion c = conversion(VISTREL_BGR24);
  setBlack(c, 21);
  uint32_t expected[3], gains[3];
  ASSERT_EQ(vistrel_measure_gains(&plainFrame, &c, expected, nullptr), VISTREL_OK);
  ASSERT_EQ(vistrel_measure_gains(&packedFrame, &c, gains, nullptr), VISTREL_OK);
  for (size_t i = 0; i < 3; ++i) EXPECT_EQ(gains[i], expected[i]);
}

// Of PFNC, GigE and MIPI none can exceed.
TEST_P(PackedFrame, HasTheSameExcessSamples) {
  make(41, 9, 1, VISTREL_BGGR);
  vistrel_conversion c = conversion(VISTREL_BGR24);
  c.excess = VISTREL_REJECT;
  const auto expected = tryConvert(plainFrame, c), result = tryConvert(packedFrame, c);
  ASSERT_EQ(bool(expected), bool(result));
  if (!expected) {
    EXPECT_STREQ(result.error().what(), expected.error().what());
  }
  if (p.packing > VISTREL_PACKING_BIG) {
    EXPECT_TRUE(result);
  }
}

TEST_P(PackedFrame, OverlapsWhereItsBytesDo) {
  make(40, 8, 0, VISTREL_BGGR);
  std::vector<uint8_t> both(packedFrame.size + 40 * 8 * 3);
  vistrel_frame frame = packedFrame;
  frame.samples = both.data();
  const vistrel_conversion c = conversion(VISTREL_BGR24);
  const size_t bytes = packedFrame.size;
  const vistrel_image behind{&both[bytes], 960, 0, {}}, shared{&both[bytes - 1], 960, 0, {}};
  EXPECT_EQ(vistrel_convert(&frame, &c, &behind, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_convert(&frame, &c, &shared, nullptr), VISTREL_OVERLAP);
  --frame.size;
  EXPECT_EQ(vistrel_convert(&frame, &c, &behind, nullptr), VISTREL_SHORT_BUFFER);
}

vistrel_error packedRejection(void (*change)(vistrel_frame&)) {
  vistrel_frame frame{};
  frame.width = 10, frame.height = 4, frame.bytes_per_sample = 2, frame.bits = 12;
  frame.packing = VISTREL_PACKING_PFNC;
  const vistrel_conversion c = defaultConversion(frame);
  change(frame);
  return rejectionOf(frame, c);
}

TEST(PackedFrames, AreRejectedWithBadFields) {
  expectError(packedRejection([](vistrel_frame& f) { f.packing = 6; }),
              {VISTREL_BAD_PACKING, "frame.packing", "6",
               "0 (not packed), LITTLE (1), BIG (2), PFNC (3), GIGE (4), MIPI (5) are allowed"});
  expectError(packedRejection([](vistrel_frame& f) { f.bits = 11; }),
              {VISTREL_BAD_BITS, "frame.bits", "11", "packing PFNC allows 10, 12, 14"});
  expectError(
      packedRejection([](vistrel_frame& f) { f.bytes_per_sample = 1, f.bits = 8, f.packing = 2; }),
      {VISTREL_BAD_BITS, "frame.bytes_per_sample", "1", "only 2 is allowed with packed samples"});
  expectError(
      packedRejection([](vistrel_frame& f) { f.bytes_per_sample = 1; }),
      {VISTREL_BAD_BITS, "frame.bytes_per_sample", "1", "only 2 is allowed with packed samples"});
  expectError(packedRejection([](vistrel_frame& f) { f.bytes_per_sample = 1, f.packing = 6; }),
              {VISTREL_BAD_PACKING, "frame.packing", "6",
               "0 (not packed), LITTLE (1), BIG (2), PFNC (3), GIGE (4), MIPI (5) are allowed"});
  expectError(packedRejection([](vistrel_frame& f) { f.alignment = VISTREL_HIGH_BITS; }),
              {VISTREL_BAD_ALIGNMENT, "frame.alignment", "1",
               "only 0 (low bits) is allowed with this packing"});
  expectError(packedRejection([](vistrel_frame& f) { f.stride = 14; }),
              {VISTREL_BAD_STRIDE, "frame.stride", "14", "a row of 10 samples has 15 bytes"});
  expectError(packedRejection([](vistrel_frame&) {}), kAccepted);
}

}  // namespace
}  // namespace vistrel
