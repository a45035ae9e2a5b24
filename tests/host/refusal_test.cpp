// Every refusal that needs neither samples nor memory: its code and its text.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

constexpr uint32_t kMost = 0xFFFFFFFF;

vistrel_frame bayer(uint32_t width, uint32_t height) {
  return {nullptr, 0, 0, width, height, 2, 12, VISTREL_RGGB, 0, {}};
}
vistrel_frame mono(uint32_t width, uint32_t height) {
  return {nullptr, 0, 0, width, height, 1, 8, VISTREL_MONO, 0, {}};
}

struct Refusal : ::testing::Test {
  vistrel_frame frame = bayer(64, 48);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_region region{0, 0, 64, 48};

  void setFrame(const vistrel_frame& f) {
    frame = f;
    conversion = defaultConversion(frame);
  }
  void setRegion(uint32_t x, uint32_t y, uint32_t width, uint32_t height) {
    region = {x, y, width, height};
    conversion.region = &region;
  }
  void expect(int32_t status, const char* text) const {
    const vistrel_error error = refusalOf(frame, conversion);
    EXPECT_EQ(error.status, status);
    EXPECT_STREQ(error.text, text);
  }
};

TEST_F(Refusal, NoneForAnOrdinaryFrame) { expect(VISTREL_OK, ""); }

TEST_F(Refusal, Size) {
  setFrame(bayer(0, 48));
  expect(VISTREL_BAD_SIZE, "width 0: a frame has 1 column or more");
  setFrame(bayer(64, 0));
  expect(VISTREL_BAD_SIZE, "height 0: a frame has 1 row or more");
}

TEST_F(Refusal, BytesPerSample) {
  for (const uint32_t bytes : {0u, 3u, 4u}) {
    frame.bytes_per_sample = bytes;
    EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_BAD_BITS);
  }
  expect(VISTREL_BAD_BITS, "bytes_per_sample 4: 1 or 2 is allowed");
}

TEST_F(Refusal, Bits) {
  for (const uint32_t bits : {0u, 7u, 17u, 32u, kMost}) {
    frame.bits = bits;
    EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_BAD_BITS) << bits;
  }
  frame.bits = 17;
  expect(VISTREL_BAD_BITS, "bits 17: 8 to 16 are allowed");
  frame.bytes_per_sample = 1;
  frame.bits = 10;
  expect(VISTREL_BAD_BITS, "bits 10: a sample of one byte has 8");
}

TEST_F(Refusal, Stride) {
  frame.stride = 127;
  expect(VISTREL_BAD_STRIDE, "stride 127: a row of 64 samples has 128 bytes");
  frame.stride = 128;
  expect(VISTREL_OK, "");
}

TEST_F(Refusal, Phase) {
  frame.phase = 5;
  expect(VISTREL_BAD_PHASE,
         "phase 5: allowed are grbg (0), bggr (1), rggb (2), gbrg (3), mono (4)");
}

TEST_F(Refusal, Alignment) {
  frame.alignment = 2;
  expect(VISTREL_BAD_ALIGNMENT, "alignment 2: 0 (low bits) and 1 (high bits) are allowed");
}

TEST_F(Refusal, ReservedFields) {
  frame.reserved[3] = 1;
  expect(VISTREL_BAD_RESERVED, "frame->reserved[3] 1: 0 is allowed, this version knows no other");
}

TEST_F(Refusal, Format) {
  conversion.format = 99;
  expect(VISTREL_BAD_FORMAT,
         "format 99: a rggb frame becomes BGR24 (2), ARGB32 (3), ARGB32_4 (4), BGR48 (7), "
         "GRAY8 (5), GRAY16 (6), RGB24 (256), BGRA32 (257), RGBA32 (258), RGB48 (259)");
  conversion.format = VISTREL_MONO16;
  expect(VISTREL_BAD_FORMAT,
         "format MONO16: a rggb frame becomes BGR24 (2), ARGB32 (3), ARGB32_4 (4), BGR48 (7), "
         "GRAY8 (5), GRAY16 (6), RGB24 (256), BGRA32 (257), RGBA32 (258), RGB48 (259)");
  setFrame(mono(64, 48));
  conversion.format = VISTREL_BGR24;
  expect(VISTREL_BAD_FORMAT, "format BGR24: a mono frame becomes MONO8 (0), MONO16 (1)");
  conversion.format = VISTREL_MONO16;
  expect(VISTREL_BAD_FORMAT, "format MONO16: it needs a frame of 2 bytes a sample, this one has 1");
}

TEST_F(Refusal, Algorithm) {
  conversion.algorithm = 9;
  std::string list;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    list.append(i ? ", " : "").append(a->name).append(" (" + std::to_string(a->code) + ")");
  EXPECT_EQ(list.substr(0, 22), "bilinear (0), edge (1)");
  expect(VISTREL_BAD_ALGORITHM, ("algorithm 9: there is " + list).c_str());
  setFrame(mono(64, 48));
  conversion.algorithm = 9;  // mono frames have none
  expect(VISTREL_OK, "");
}

TEST_F(Refusal, MoreBitsThanAnAlgorithmIsMadeFor) {
  conversion.algorithm = VISTREL_LAROCHE;
  expect(
      VISTREL_BAD_ALGORITHM,
      "algorithm laroche: made for 10 bits at most, the samples have 12; truncate_to 10 drops the "
      "lowest ones first");
  conversion.truncate_to = 11;
  expect(
      VISTREL_BAD_ALGORITHM,
      "algorithm laroche: made for 10 bits at most, the samples have 11; truncate_to 10 drops the "
      "lowest ones first");
  conversion.truncate_to = 10;
  expect(VISTREL_OK, "");
  conversion.truncate_to = 0;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    conversion.algorithm = a->code;
    for (frame.bits = 8; frame.bits <= 16; ++frame.bits)
      EXPECT_EQ(refusalOf(frame, conversion).status,
                frame.bits > a->max_bits ? VISTREL_BAD_ALGORITHM : VISTREL_OK)
          << a->name << ", " << frame.bits << " bits";
  }
}

TEST_F(Refusal, Binning) {
  conversion.binning = 0;
  expect(VISTREL_BAD_BINNING, "binning 0: 1 to 4 are allowed");
  conversion.binning = 5;
  expect(VISTREL_BAD_BINNING, "binning 5: 1 to 4 are allowed");
}

TEST_F(Refusal, LutMode) {
  conversion.reduction = 8;
  expect(VISTREL_BAD_REDUCTION, "reduction 8: 0 to 7 and 10 are allowed");
  conversion.reduction = 1;
  conversion.format = VISTREL_BGR48;
  expect(VISTREL_BAD_REDUCTION, "reduction 1: format BGR48 keeps all bits and allows 0 alone");
}

TEST_F(Refusal, LutModeWithoutTheBitsForIt) {
  for (uint32_t bits = 8; bits <= 16; ++bits) {
    frame.bits = bits;
    for (uint32_t mode = 0; mode <= 7; ++mode) {
      conversion.reduction = mode;
      const uint32_t least = mode == 0 ? 8 : mode == 1 ? 9 : 10;
      EXPECT_EQ(refusalOf(frame, conversion).status,
                bits < least ? VISTREL_BAD_REDUCTION : VISTREL_OK)
          << bits << " bits, mode " << mode;
    }
  }
  frame.bits = 9;
  expect(VISTREL_BAD_REDUCTION, "reduction 7: it needs 10 bits or more, the samples have 9");
}

TEST_F(Refusal, Reduction) {
  for (const uint32_t bits : {1u, 7u, 17u, kMost}) {
    conversion.truncate_to = bits;
    EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_BAD_TRUNCATION) << bits;
  }
  conversion.truncate_to = 7;
  expect(VISTREL_BAD_TRUNCATION, "truncate_to 7: 0 (no reduction) and 8 to 16 are allowed");
  conversion.truncate_to = 9;
  conversion.reduction = 2;
  expect(VISTREL_BAD_REDUCTION, "reduction 2: it needs 10 bits or more, the samples have 9");
}

TEST_F(Refusal, Threshold) {
  conversion.threshold = 1;
  expect(VISTREL_BAD_THRESHOLD, "threshold 1: algorithm bilinear allows 0 alone, it has none");
  conversion.algorithm = VISTREL_EDGE;
  conversion.threshold = 255;
  expect(VISTREL_OK, "");
  conversion.threshold = 256;
  expect(VISTREL_BAD_THRESHOLD, "threshold 256: algorithm edge allows 0 to 255");
}

TEST_F(Refusal, Gray) {
  conversion.gray = 2;  // not read for colours
  expect(VISTREL_OK, "");
  conversion.format = VISTREL_GRAY8;
  expect(VISTREL_BAD_GRAY, "gray 2: 0 (luma) and 1 (raw) are allowed");
  conversion.gray = VISTREL_RAW_GRAY;
  expect(VISTREL_OK, "");
  conversion.algorithm = VISTREL_NEAR;
  expect(VISTREL_BAD_GRAY,
         "gray 1 (raw): the library's own gray of algorithm near is sheared; 0 (luma) is allowed");
  conversion.algorithm = VISTREL_AHD;
  EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_BAD_GRAY);
  conversion.gray = VISTREL_LUMA;
  expect(VISTREL_OK, "");
}

TEST_F(Refusal, Table) {
  std::vector<uint16_t> table(65536);
  conversion.reduction = 10;
  conversion.table_entries = 1024;
  expect(VISTREL_NULL_POINTER, "table is null");
  conversion.table = table.data();
  for (const uint32_t entries : {0u, 256u, 1023u, 1025u, 2048u, 4095u, 8192u}) {
    conversion.table_entries = entries;
    EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_BAD_TABLE) << entries;
  }
  conversion.table_entries = 256;
  expect(VISTREL_BAD_TABLE, "table_entries 256: samples of 12 bits take 1024 or 4096");
  conversion.truncate_to = 10;
  expect(VISTREL_BAD_TABLE, "table_entries 256: samples of 10 bits take 1024");
  conversion.table_entries = 1024;
  table[1023] = 256;
  expect(VISTREL_BAD_TABLE, "table[1023] 256: 0 to 255 are allowed");
  table[1023] = 255;
  expect(VISTREL_OK, "");
  conversion.truncate_to = 0;
  frame.bits = 13;
  expect(
      VISTREL_BAD_REDUCTION,
      "reduction 10: a table serves 10 to 12 bits, the samples have 13; truncate_to 12 drops the "
      "lowest ones first");
  frame.bits = 9;
  expect(VISTREL_BAD_REDUCTION, "reduction 10: it needs 10 bits or more, the samples have 9");
}

TEST_F(Refusal, Excess) {
  conversion.excess = 2;
  expect(VISTREL_BAD_EXCESS, "excess 2: 0 (refuse) and 1 (mask) are allowed");
}

TEST_F(Refusal, Black) {
  conversion.black = 4095;
  expect(VISTREL_OK, "");
  conversion.black = 4096;
  expect(VISTREL_BAD_BLACK, "black 4096: samples of 12 bits allow 0 to 4095");
  frame.bits = 16;
  conversion.black = 65536;
  expect(VISTREL_BAD_BLACK, "black 65536: samples of 16 bits allow 0 to 65535");
}

TEST_F(Refusal, WhiteBalance) {
  conversion.white_balance = 3;
  expect(VISTREL_BAD_BALANCE,
         "white_balance 3: 0 (none), 1 (gains) and 2 (gray-world) are allowed");
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  conversion.gains[0] = 65536, conversion.gains[1] = 1;
  expect(VISTREL_BAD_BALANCE, "gains[2] 0: 1 to 65536 are allowed, 4096 is a gain of 1");
  conversion.gains[2] = 65537;
  expect(VISTREL_BAD_BALANCE, "gains[2] 65537: 1 to 65536 are allowed, 4096 is a gain of 1");
  conversion.gains[2] = 4096;
  expect(VISTREL_OK, "");
  setFrame(mono(64, 48));
  conversion.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  expect(VISTREL_BAD_BALANCE, "white_balance 2: a mono frame has no colours; 0 is allowed");
}

TEST_F(Refusal, Edges) {
  conversion.edges = 2;
  expect(VISTREL_BAD_EDGES, "edges 2: 0 (native) and 1 (padded) are allowed");
  conversion.edges = VISTREL_EDGES_PADDED;
  conversion.format = VISTREL_GRAY8;
  conversion.gray = VISTREL_RAW_GRAY;
  expect(VISTREL_BAD_EDGES, "edges 1 (padded): not with gray 1 (raw); 0 (native) is allowed");
  conversion.gray = VISTREL_LUMA;
  expect(VISTREL_OK, "");
  setFrame(bayer(1, 9));
  conversion.edges = VISTREL_EDGES_PADDED;
  expect(VISTREL_REGION_TOO_SMALL,
         "frame 1x9: to be padded a mosaic has 2 columns and 2 rows or more");
}

TEST_F(Refusal, ReservedFieldsOfTheConversion) {
  conversion.reserved[7] = 3;
  expect(VISTREL_BAD_RESERVED,
         "conversion->reserved[7] 3: 0 is allowed, this version knows no other");
}

TEST_F(Refusal, RegionOutsideTheFrame) {
  setRegion(1, 0, 64, 48);
  expect(VISTREL_BAD_REGION, "region 64x48+1+0: it leaves the frame of 64x48");
  setRegion(0, 40, 64, 9);
  expect(VISTREL_BAD_REGION, "region 64x9+0+40: it leaves the frame of 64x48");
  setRegion(kMost, 0, 2, 2);  // the sum of origin and size passes 32 bits
  expect(VISTREL_BAD_REGION, "region 2x2+4294967295+0: it leaves the frame of 64x48");
  setRegion(62, 46, 2, 2);
  expect(VISTREL_OK, "");
}

TEST_F(Refusal, RegionThatBinsToNothing) {
  setRegion(0, 0, 0, 10);
  expect(VISTREL_REGION_TOO_SMALL, "region 0x10+0+0: not one whole bin of 1x1 pixels is in it");
  setRegion(5, 5, 3, 40);
  conversion.binning = 4;
  expect(VISTREL_REGION_TOO_SMALL, "region 3x40+5+5: not one whole bin of 4x4 pixels is in it");
}

TEST_F(Refusal, LessThanADemosaicNeeds) {
  setFrame(bayer(1, 1));
  expect(VISTREL_REGION_TOO_SMALL, "region 1x1+0+0: algorithm bilinear needs 2x2 pixels or more");
  setFrame(bayer(1, 100));
  expect(VISTREL_REGION_TOO_SMALL, "region 1x100+0+0: algorithm bilinear needs 2x2 pixels or more");
  setFrame(bayer(2, 2));
  expect(VISTREL_OK, "");
  conversion.algorithm = VISTREL_AHD;
  expect(VISTREL_REGION_TOO_SMALL, "region 2x2+0+0: algorithm ahd needs 5x5 pixels or more");
  setFrame(mono(1, 1));
  expect(VISTREL_OK, "");
}

// 3 * 37831 + 18 samples in each of 37831 + 6 rows are 4294915707, the next size 4295142732.
TEST_F(Refusal, WorkBufferThatCannotBeCounted) {
  setFrame(bayer(37831, 37831));
  expect(VISTREL_OK, "");
  setFrame(bayer(37832, 37832));
  expect(VISTREL_TOO_LARGE,
         "region of 37832x37832 pixels: the work buffer has 4295142732 samples, "
         "4294967295 are allowed");
}

TEST_F(Refusal, PaddingCountsInSixtyFourBits) {
  setFrame(bayer(kMost, 2));
  conversion.edges = VISTREL_EDGES_PADDED;
  expect(VISTREL_TOO_LARGE,
         "region of 4294967311x18 pixels: it has 77309411598 samples, 4294967295 are allowed");
}

TEST_F(Refusal, FrameAndImageThatCannotBeCounted) {
  setFrame(mono(65536, 65535));
  expect(VISTREL_OK, "");
  setFrame(mono(65536, 65536));
  expect(VISTREL_TOO_LARGE,
         "region of 65536x65536 pixels: it has 4294967296 samples, 4294967295 are allowed");
  setFrame(mono(kMost, kMost));
  EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_TOO_LARGE);
  setFrame(bayer(kMost, kMost));
  EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_TOO_LARGE);
  setFrame(bayer(32768, 32768));
  expect(VISTREL_OK, "");
  conversion.format = VISTREL_ARGB32;
  expect(VISTREL_TOO_LARGE,
         "region of 32768x32768 pixels: the image has 4294967296 samples, 4294967295 are allowed");
}

TEST_F(Refusal, StrideThatNoMemoryHolds) {
  frame.stride = SIZE_MAX;
  EXPECT_EQ(refusalOf(frame, conversion).status, VISTREL_TOO_LARGE);
}

TEST_F(Refusal, NullPointers) {
  vistrel_layout layout{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_get_layout(nullptr, &conversion, &layout, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "frame is null");
  EXPECT_EQ(vistrel_get_layout(&frame, nullptr, &layout, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "conversion is null");
  EXPECT_EQ(vistrel_get_layout(&frame, &conversion, nullptr, &error), VISTREL_NULL_POINTER);
  EXPECT_STREQ(error.text, "layout is null");
  EXPECT_EQ(vistrel_get_layout(&frame, &conversion, nullptr, nullptr), VISTREL_NULL_POINTER);
}

}  // namespace
}  // namespace vistrel
