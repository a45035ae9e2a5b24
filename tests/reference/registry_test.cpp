#include "tests/reference/registry.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/reference/convert.h"

namespace {

class ReferenceRegistry : public testing::Test {
 protected:
  void SetUp() override { reference::ImgLoadDriver(); }
  void TearDown() override { reference::ImgUnloadDriver(); }
};

TEST_F(ReferenceRegistry, GivesSlotsInOrderAndRejectsThe129thId) {
  for (uint32_t id = 1000; id < 1128; ++id) {
    ASSERT_EQ(reference::ImgInitialize(id, 4, 4), 1U);
    ASSERT_EQ(reference::ID2Index(id), id - 1000);
  }
  EXPECT_EQ(reference::ImgInitialize(7, 4, 4), 0U);
  EXPECT_EQ(reference::ID2Index(7), 128U);
  EXPECT_EQ(reference::ImgInitialize(1127, 8, 8), 1U);
  EXPECT_EQ(reference::g_anBGRBytes[127], 42U * 14 * 2);
}

TEST_F(ReferenceRegistry, KeepsIdsOverUnload) {
  reference::ImgInitialize(5, 4, 4);
  reference::ImgInitialize(6, 4, 4);
  reference::ImgUnloadDriver();
  EXPECT_EQ(reference::ID2Index(6), 1U);
  EXPECT_EQ(reference::g_pwBGRBuff[1], nullptr);
  EXPECT_EQ(reference::ImgInitialize(6, 4, 4), 1U);
  EXPECT_NE(reference::g_pwBGRBuff[1], nullptr);
}

TEST_F(ReferenceRegistry, LoadsUpTo4096EntriesAndKeepsTheTail) {
  reference::ImgInitialize(5, 4, 4);
  const std::vector<uint16_t> ones(5000, 1), twos(5000, 2);
  ASSERT_EQ(reference::ImgLoadLookupTable(5, ones.data(), 0), 1U);
  EXPECT_EQ(reference::g_pwUserLUT[0][0], 0);
  ASSERT_EQ(reference::ImgLoadLookupTable(5, ones.data(), 5000), 1U);
  ASSERT_EQ(reference::ImgLoadLookupTable(5, twos.data(), 10), 1U);
  EXPECT_EQ(reference::g_pwUserLUT[0][9], 2);
  EXPECT_EQ(reference::g_pwUserLUT[0][10], 1);
  EXPECT_EQ(reference::g_pwUserLUT[0][4095], 1);
}

TEST_F(ReferenceRegistry, RejectsAndAcceptsByFormatBeforeAlgorithm) {
  reference::ImgInitialize(5, 4, 4);
  const uint8_t source[16 * 3] = {};
  uint8_t out[64];
  std::fill(std::begin(out), std::end(out), 0x55);
  const auto convert = [&](uint32_t format, uint32_t algorithm, uint32_t binning, uint32_t skip) {
    return reference::ImgConvert8(5, format, algorithm, 0, binning, 4, 4, 0, 0, 2, 2, source, out,
                                  8, skip);
  };
  EXPECT_EQ(convert(2, 9, 0, 0), 0U);
  EXPECT_EQ(convert(1, 0, 0, 0), 0U);
  EXPECT_EQ(convert(6, 0, 0, 1), 0U);
  EXPECT_EQ(convert(0, 200, 4, 0), 1U);
  EXPECT_EQ(convert(7, 0, 0, 0), 1U);
  for (uint8_t byte : out) EXPECT_EQ(byte, 0x55);
  EXPECT_EQ(convert(2, 9, 0, 1), 1U);
  EXPECT_EQ(out[11], 0);
  EXPECT_EQ(out[12], 0x55);
}

}  // namespace
