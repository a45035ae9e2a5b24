// Packed frames: sizes and rejections.
#include <gmock/gmock.h>

#include <vector>

#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using ::testing::Each;

vistrel_packed_layout layoutOf(const vistrel_packed& packed) {
  vistrel_packed_layout layout{};
  vistrel_error error{};
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, &error), VISTREL_OK) << error.text;
  return layout;
}

struct UnpackRejection : ::testing::Test {
  std::vector<uint8_t> bytes = std::vector<uint8_t>(3 * 4, 0x5A);
  std::vector<uint8_t> samples = std::vector<uint8_t>(2 * 2 * 4, 77);
  vistrel_packed packed{bytes.data(), bytes.size(), 0, 2, 4, VISTREL_PACKING_GIGE, 12, 0, {}};
  size_t size = samples.size();

  void expect(const Rejection& expected) {
    vistrel_error error{};
    EXPECT_EQ(vistrel_unpack(&packed, samples.data(), size, &error), expected.status);
    expectError(error, expected);
    if (expected.status) {
      EXPECT_THAT(samples, Each(77));
    }
  }
};

TEST_F(UnpackRejection, NoneForAGoodDescription) { expect(kAccepted); }

TEST_F(UnpackRejection, Shapes) {
  packed.width = 0;
  expect({VISTREL_BAD_SIZE, "packed.width", "0", "a packed frame has at least 1 column"});
  packed.width = 2, packed.height = 0;
  expect({VISTREL_BAD_SIZE, "packed.height", "0", "a packed frame has at least 1 row"});
  packed.height = 4, packed.stride = 2;
  expect({VISTREL_BAD_STRIDE, "packed.stride", "2", "a row of 2 samples has 3 bytes"});
  packed.stride = 3, packed.continuous = 1;
  expect({VISTREL_BAD_STRIDE, "packed.stride", "3",
          "continuous rows have no stride; only 0 is allowed"});
  packed.continuous = 2;
  expect({VISTREL_BAD_CONTINUOUS, "packed.continuous", "2", "0 and 1 are allowed"});
  packed.continuous = 0, packed.reserved[1] = 9;
  expect({VISTREL_BAD_RESERVED, "packed.reserved[1]", "9", "only 0 is allowed in this version"});
}

TEST_F(UnpackRejection, PackingAndBits) {
  packed.packing = 6;
  expect({VISTREL_BAD_PACKING, "packed.packing", "6",
          "BYTES (0), LITTLE (1), BIG (2), PFNC (3), GIGE (4), MIPI (5) are allowed"});
  packed.packing = VISTREL_PACKING_MIPI, packed.bits = 11;
  expect({VISTREL_BAD_BITS, "packed.bits", "11", "packing MIPI allows 10, 12, 14"});
  packed.packing = VISTREL_PACKING_GIGE, packed.bits = 14;
  expect({VISTREL_BAD_BITS, "packed.bits", "14", "packing GIGE allows 10, 12"});
  packed.packing = VISTREL_PACKING_BYTES;
  expect({VISTREL_BAD_BITS, "packed.bits", "14", "packing BYTES allows 8"});
  packed.packing = VISTREL_PACKING_BIG, packed.bits = 17;
  expect({VISTREL_BAD_BITS, "packed.bits", "17", "packing BIG allows 8 to 16"});
}

TEST_F(UnpackRejection, Memory) {
  packed.size = 11;
  expect({VISTREL_SHORT_BUFFER, "packed.size", "11", "4 rows of stride 3 take 12 bytes"});
  packed.size = 12, size = 15;
  expect({VISTREL_SHORT_BUFFER, "size", "15", "2x4 samples take 16 bytes"});
  packed.bytes = nullptr;
  expect(nullPointer("packed.bytes"));
  packed.bytes = samples.data() + 15, size = 16;
  expect({VISTREL_OVERLAP, "samples", "", "they overlap the packed bytes"});
  vistrel_error error{};
  packed.bytes = bytes.data();
  EXPECT_EQ(vistrel_unpack(&packed, nullptr, 16, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("samples"));
  EXPECT_EQ(vistrel_unpack(nullptr, samples.data(), 16, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("packed"));
  EXPECT_EQ(vistrel_get_packed_layout(&packed, nullptr, &error), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("layout"));
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
  expectError(error, {VISTREL_TOO_LARGE, "packed", "4294967295x4294967295",
                      "no memory can hold its samples"});
  packed = {nullptr, 0, SIZE_MAX / 2, 2, 3, VISTREL_PACKING_PFNC, 12, 0, {}};
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, &error), VISTREL_TOO_LARGE);
  expectError(error, {VISTREL_TOO_LARGE, "packed.stride", std::to_string(SIZE_MAX / 2),
                      "no memory can hold 3 such rows"});
  packed.height = 1;
  packed.stride = SIZE_MAX;  // a single row's does not matter
  EXPECT_EQ(layoutOf(packed).bytes, 3u);
}

}  // namespace
}  // namespace vistrel
