// Regions, sizes and buffers: what fits, and what is rejected.
#include <gmock/gmock.h>

#include <cstdint>
#include <vector>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::Each;

TEST(Layout, FollowsRegionBinningAndFormat) {
  const vistrel_frame frame{nullptr, 0, 0, 100, 50, 2, 12, VISTREL_RGGB, 0, 0, {}};
  vistrel_conversion c = defaultConversion(frame);
  const vistrel_region region{10, 20, 41, 23};
  c.region = region;
  c.binning = 3;
  c.format = VISTREL_BGR48;
  const vistrel_layout l = layoutOf(frame, c);
  EXPECT_EQ(l.width, 13u);
  EXPECT_EQ(l.height, 7u);
  EXPECT_EQ(l.channels, 3u);
  EXPECT_EQ(l.bits, 12u);
  EXPECT_EQ(l.row_bytes, 78u);
  EXPECT_EQ(l.bytes, 546u);
  EXPECT_EQ(l.frame_bytes, 10000u);
  c.format = VISTREL_ARGB32;
  EXPECT_EQ(layoutOf(frame, c).channels, 4u);
  EXPECT_EQ(layoutOf(frame, c).bits, 8u);
  EXPECT_EQ(layoutOf(frame, c).row_bytes, 52u);
}

struct Regions : ::testing::Test {
  vistrel_frame frame = bayer(64, 48);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_region region{};

  void setFrame(const vistrel_frame& f) {
    frame = f;
    conversion = defaultConversion(frame);
  }
  void setRegion(uint32_t x, uint32_t y, uint32_t width, uint32_t height) {
    region = {x, y, width, height};
    conversion.region = region;
  }
  void expect(const Rejection& expected) const {
    expectError(rejectionOf(frame, conversion), expected);
  }
};

TEST_F(Regions, OutsideTheFrame) {
  const std::string reason = "it extends beyond the frame of 64x48";
  setRegion(1, 0, 64, 48);
  expect({VISTREL_BAD_REGION, "conversion.region", "64x48+1+0", reason});
  setRegion(0, 40, 64, 9);
  expect({VISTREL_BAD_REGION, "conversion.region", "64x9+0+40", reason});
  setRegion(kMax, 0, 2, 2);  // the sum of origin and size exceeds 32 bits
  expect({VISTREL_BAD_REGION, "conversion.region", "2x2+4294967295+0", reason});
  setRegion(62, 46, 2, 2);
  expect(kAccepted);
}

TEST_F(Regions, WithoutAWholeBin) {
  setRegion(0, 0, 0, 10);
  expect({VISTREL_REGION_TOO_SMALL, "conversion.region", "0x10+0+0", "it is empty"});
  setRegion(5, 5, 3, 40);
  conversion.binning = 4;
  expect({VISTREL_REGION_TOO_SMALL, "conversion.region", "3x40+5+5",
          "it contains no whole bin of 4x4 pixels"});
}

TEST_F(Regions, TooSmallForTheAlgorithm) {
  const std::string reason = "algorithm bilinear needs 2x2 pixels or more";
  setFrame(bayer(1, 1));
  expect({VISTREL_REGION_TOO_SMALL, "frame", "1x1", reason});
  setFrame(bayer(1, 100));
  expect({VISTREL_REGION_TOO_SMALL, "frame", "1x100", reason});
  setFrame(bayer(2, 2));
  expect(kAccepted);
  conversion.algorithm = VISTREL_AHD;
  expect({VISTREL_REGION_TOO_SMALL, "frame", "2x2", "algorithm ahd needs 5x5 pixels or more"});
  setFrame(bayer(9, 9));
  setRegion(4, 4, 5, 1);
  expect({VISTREL_REGION_TOO_SMALL, "conversion.region", "5x1+4+4", reason});
  setFrame(mono(1, 1));
  expect(kAccepted);
}

// 3 * 37830 + 18 samples in each of 37830 + 6 rows are 4294688688, two more columns and rows
// 4295142732.
TEST_F(Regions, BufferOfBinnedRawGrayThatCannotBeCounted) {
  const auto choose = [&](uint32_t side) {
    setFrame(bayer(side, side));
    conversion.format = VISTREL_GRAY8;
    conversion.gray = VISTREL_RAW_GRAY;
    conversion.binning = 2;
  };
  choose(37830);
  expect(kAccepted);
  choose(37832);
  expect({VISTREL_TOO_LARGE, "frame", "37832x37832",
          "its raw gray takes a buffer of more than 4294967295 samples"});
  conversion.binning = 1;
  expect(kAccepted);
}

TEST_F(Regions, PaddingCountsInSixtyFourBits) {
  setFrame(bayer(kMax, 2));
  conversion.edges = VISTREL_EDGES_PADDED;
  expect({VISTREL_TOO_LARGE, "frame", "4294967295x2",
          "with its padding it has more than 2147483392 rows or columns"});
  setFrame(bayer(kMax, kMax));  // (2^32 + 15)^2 exceeds 64 bits
  conversion.edges = VISTREL_EDGES_PADDED;
  expect({VISTREL_TOO_LARGE, "frame", "4294967295x4294967295",
          "with its padding it has more than 2147483392 rows or columns"});
}

TEST_F(Regions, FrameAndImageThatCannotBeCounted) {
  setFrame(mono(65536, 65535));
  expect(kAccepted);
  setFrame(mono(65536, 65536));
  expect({VISTREL_TOO_LARGE, "frame", "65536x65536", "it has more than 4294967295 samples"});
  setFrame(mono(kMax, kMax));
  EXPECT_EQ(rejectionOf(frame, conversion).status, VISTREL_TOO_LARGE);
  setFrame(bayer(kMax, kMax));
  EXPECT_EQ(rejectionOf(frame, conversion).status, VISTREL_TOO_LARGE);
  setFrame(mono(0x7FFFFF00, 1));
  expect(kAccepted);
  setFrame(mono(1, 0x7FFFFF01));
  expect(
      {VISTREL_TOO_LARGE, "frame", "1x2147483393", "it has more than 2147483392 rows or columns"});
}

TEST_F(Regions, StrideThatNoMemoryHolds) {
  frame.stride = SIZE_MAX;
  expect({VISTREL_TOO_LARGE, "frame.stride", std::to_string(SIZE_MAX),
          "no memory can hold 48 such rows"});
}

TEST_F(Regions, NullPointers) {
  vistrel_layout layout{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_get_layout(nullptr, &conversion, &layout, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("frame"));
  EXPECT_EQ(vistrel_get_layout(&frame, nullptr, &layout, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("conversion"));
  EXPECT_EQ(vistrel_get_layout(&frame, &conversion, nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("layout"));
  EXPECT_EQ(vistrel_get_layout(&frame, &conversion, nullptr, nullptr), VISTREL_NULL_POINTER);
}

struct Memory : ::testing::Test {
  std::vector<uint8_t> samples = std::vector<uint8_t>(6 * 4, 9);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(6 * 4, 77);
  vistrel_frame frame = frameOf(samples, 6, 4, VISTREL_MONO);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};

  void expect(const Rejection& expected) {
    vistrel_error error{};
    EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), expected.status);
    expectError(error, expected);
    EXPECT_THAT(pixels, Each(expected.status == VISTREL_OK ? 9 : 77));
  }
};

TEST_F(Memory, IsEnough) { expect(kAccepted); }

TEST_F(Memory, NullPointers) {
  frame.samples = nullptr;
  expect(nullPointer("frame.samples"));
  frame.samples = samples.data();
  image.pixels = nullptr;
  expect(nullPointer("image.pixels"));
  vistrel_error error{};
  EXPECT_EQ(vistrel_convert(&frame, &conversion, nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("image"));
}

TEST_F(Memory, FrameEndsEarly) {
  frame.size = 23;
  expect({VISTREL_SHORT_BUFFER, "frame.size", "23", "4 rows of stride 6 take 24 bytes"});
  frame.size = 24;
  frame.stride = 7;  // the last row has no gap after it
  expect({VISTREL_SHORT_BUFFER, "frame.size", "24", "4 rows of stride 7 take 27 bytes"});
}

TEST_F(Memory, ImageEndsEarly) {
  image.size = 23;
  expect({VISTREL_SHORT_BUFFER, "image.size", "23", "4 rows of stride 6 take 24 bytes"});
  image.size = 24;
  image.stride = 7;
  expect({VISTREL_SHORT_BUFFER, "image.size", "24", "4 rows of stride 7 take 27 bytes"});
}

TEST_F(Memory, ImageStrideIsTooShortOrTooLong) {
  image.stride = 5;
  expect({VISTREL_BAD_STRIDE, "image.stride", "5", "a row has 6 bytes"});
  image.stride = -5;
  expect({VISTREL_BAD_STRIDE, "image.stride", "-5", "a row has 6 bytes"});
  for (const ptrdiff_t stride : {PTRDIFF_MAX / 2, PTRDIFF_MAX, PTRDIFF_MIN / 2, PTRDIFF_MIN}) {
    image.stride = stride;
    expect({VISTREL_TOO_LARGE, "image.stride", std::to_string(stride),
            "no memory can hold 4 such rows"});
  }
}

TEST_F(Memory, StrideOfASingleRowDoesNotMatter) {
  frame.height = 1;
  frame.stride = SIZE_MAX;
  image.size = 6;
  for (const ptrdiff_t stride : {ptrdiff_t{6}, PTRDIFF_MAX, ptrdiff_t{-6}, PTRDIFF_MIN}) {
    image.stride = stride;
    vistrel_error error{};
    EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), VISTREL_OK) << error.text;
  }
}

TEST_F(Memory, OfANegativeStrideCountsFromTheLastRow) {
  image.stride = -6;
  image.pixels = pixels.data() + 18;
  image.size = 23;
  expect({VISTREL_SHORT_BUFFER, "image.size", "23", "4 rows of stride -6 take 24 bytes"});
  image.size = 24;
  expect(kAccepted);
}

TEST_F(Memory, RowsBelowAddressZero) {
  image.pixels = reinterpret_cast<void*>(uintptr_t{100});
  image.stride = -60;
  image.size = SIZE_MAX;
  expect({VISTREL_TOO_LARGE, "image.stride", "-60", "no memory can hold 4 such rows"});
}

TEST_F(Memory, ReservedFields) {
  image.reserved[9] = 3;
  expect({VISTREL_BAD_RESERVED, "image.reserved[9]", "3", "only 0 is allowed in this version"});
}

TEST_F(Memory, FrameAndImageOverlap) {
  image.pixels = samples.data() + 23;
  image.size = 1000;
  expect({VISTREL_OVERLAP, "image.pixels", "", "they overlap the frame's samples"});
  EXPECT_THAT(samples, Each(9));
  image = {samples.data(), 1000, -6, {}};  // only the first row lies in the samples
  expect({VISTREL_OVERLAP, "image.pixels", "", "they overlap the frame's samples"});
  EXPECT_THAT(samples, Each(9));
}

TEST_F(Memory, MayBeTheOtherHalfOfACanvas) {
  std::vector<uint8_t> canvas(12 * 4, 77);
  for (size_t i = 0; i < canvas.size(); ++i)
    if (i % 12 < 6) canvas[i] = 9;
  frame.samples = canvas.data();
  frame.size = canvas.size();
  frame.stride = 12;
  for (const ptrdiff_t stride : {12, -12}) {
    image = {canvas.data() + (stride < 0 ? 42 : 6), canvas.size() - 6, stride, {}};
    vistrel_error error{};
    EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), VISTREL_OK) << error.text;
    EXPECT_THAT(canvas, Each(9));
  }
}

}  // namespace
}  // namespace vistrel
