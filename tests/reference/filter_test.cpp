#include "tests/reference/filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/reference/registry.h"

namespace {

using testing::Each;

class ReferenceFilter : public testing::Test {
 protected:
  void SetUp() override {
    reference::ImgLoadDriver();
    reference::ImgInitialize(1, 16, 16);
  }
  void TearDown() override { reference::ImgUnloadDriver(); }

  template <class T>
  static void filter(const void* pFilter, uint32_t format, uint32_t w, uint32_t h,
                     std::vector<T>& image) {
    EXPECT_EQ(reference::ImgFilter(1, pFilter, format, w, h, image.data()), 1U);
  }
  static const void* numbered(uintptr_t n) { return reinterpret_cast<const void*>(n); }
};

template <class T>
std::vector<T> ramp(size_t samples) {
  std::vector<T> image(samples);
  for (size_t k = 0; k < samples; ++k) image[k] = static_cast<T>((k * 37 + k / 7) % 251);
  return image;
}

const int32_t identity[10] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0};
const int32_t ninth[10] = {9, 1, 1, 1, 1, 1, 1, 1, 1, 1};

TEST_F(ReferenceFilter, IdentityChangesNothing) {
  for (uint32_t format : {0U, 5U, 2U, 3U, 4U}) {
    const std::vector<uint8_t> before = ramp<uint8_t>(7 * 6 * 4);
    std::vector<uint8_t> image = before;
    filter(identity, format, 7, 6, image);
    EXPECT_EQ(image, before) << format;
  }
}

TEST_F(ReferenceFilter, HoldsSixteenBitSamplesTo1023) {
  std::vector<uint16_t> image(6 * 5, 2000);
  filter(ninth, 1, 6, 5, image);
  for (unsigned y = 0; y < 5; ++y) {
    for (unsigned x = 0; x < 6; ++x) {
      const bool rim = x == 0 || y == 0 || x == 5 || y == 4;
      EXPECT_EQ(image[y * 6 + x], rim ? 2000 : 1023);
    }
  }
}

TEST_F(ReferenceFilter, HoldsNegativeResultsToZero) {
  int32_t negative[10] = {-1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
  std::vector<uint8_t> image(5 * 5, 9);
  filter(negative, 0, 5, 5, image);
  EXPECT_EQ(image[12], 0);
  EXPECT_EQ(image[4], 9);
}

TEST_F(ReferenceFilter, ChangesTheCentreOfThreeByThreeAlone) {
  std::vector<uint8_t> image = {0, 9, 18, 27, 100, 45, 54, 63, 72};
  filter(ninth, 5, 3, 3, image);
  EXPECT_THAT(image, testing::ElementsAre(0, 9, 18, 27, 388 / 9, 45, 54, 63, 72));
}

TEST_F(ReferenceFilter, TakesTheByteBeforeAtTheLowerLeftOfFour) {
  const int32_t lowerLeft[10] = {1, 0, 0, 0, 0, 0, 0, 1, 0, 0};
  const std::vector<uint8_t> before = ramp<uint8_t>(5 * 4 * 4);
  std::vector<uint8_t> image = before;
  filter(lowerLeft, 3, 5, 4, image);
  for (unsigned p = 4; p <= 15; ++p) EXPECT_EQ(image[20 + p], before[40 + p - 1]);
  EXPECT_EQ(image[20 + 3], before[20 + 3]);
  EXPECT_EQ(image[20 + 16], before[20 + 16]);
}

TEST_F(ReferenceFilter, TakesNeighbouringBytesInTheMiddleRowOfThree) {
  const int32_t left[10] = {1, 0, 0, 0, 1, 0, 0, 0, 0, 0};
  const std::vector<uint8_t> before = ramp<uint8_t>(4 * 3 * 3);
  std::vector<uint8_t> image = before;
  filter(left, 2, 4, 3, image);
  for (unsigned p = 3; p <= 8; ++p) EXPECT_EQ(image[12 + p], before[12 + p - 1]);
  EXPECT_EQ(image[12 + 9], before[12 + 9]);
}

// Format 7 is filtered as four-byte pixels: the last third of its bytes stays unchanged.
TEST_F(ReferenceFilter, TakesEveryOtherFormatForFourBytes) {
  std::vector<uint8_t> image(5 * 5 * 6, 90);
  image[63] = 0;  // row 3 of 20 bytes, the last byte of the first pixel
  filter(ninth, 7, 5, 5, image);
  EXPECT_EQ(image[40 + 4], 80);  // by the lower left tap
  EXPECT_EQ(image[60 + 4], 90);
  EXPECT_EQ(image[60 + 7], 80);  // by the left tap
  EXPECT_THAT(std::vector<uint8_t>(image.begin() + 80, image.end()), Each(90));
}

TEST_F(ReferenceFilter, RunsTheFiveTapsOverTheMiddleOfFiveRows) {
  const std::vector<uint8_t> before = ramp<uint8_t>(7 * 5);
  std::vector<uint8_t> image = before;
  filter(numbered(1), 5, 7, 5, image);
  for (unsigned k = 0; k < 35; ++k) {
    if (k < 14 || k > 16) {
      EXPECT_EQ(image[k], before[k]) << k;
    }
  }
  // Column 0, even row: the diagonals, of which two are the ends of the rows above.
  EXPECT_EQ(image[14], (before[6] + before[8] + before[14] + before[20] + before[22]) / 5);
  EXPECT_EQ(image[15], (before[1] + before[13] + before[15] + before[17] + before[29]) / 5);
  EXPECT_EQ(image[16], (before[8] + before[10] + before[16] + before[22] + before[24]) / 5);
}

TEST_F(ReferenceFilter, StopsTheBoxOfSixteenBitSamplesTwoColumnsEarlier) {
  std::vector<uint16_t> samples16(4 * 3, 1);
  samples16[1] = 2001;
  filter(numbered(0), 6, 4, 3, samples16);
  EXPECT_THAT(samples16, testing::ElementsAre(501, 2001, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1));
  std::vector<uint16_t> bright(4 * 2, 3000);
  filter(numbered(0), 1, 4, 2, bright);
  EXPECT_THAT(bright, testing::ElementsAre(1023, 3000, 3000, 3000, 3000, 3000, 3000, 3000));
  std::vector<uint8_t> bytes = {4, 8, 12, 4, 8, 13};
  filter(numbered(0), 0, 3, 2, bytes);
  EXPECT_THAT(bytes, testing::ElementsAre(6, 10, 12, 4, 8, 13));
}

}  // namespace
