// Near neighbour and the AHD wrapper, which leave a compact image.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/reference/demosaic.h"
#include "tests/reference/demosaiced.h"

namespace {

using testing::Each;

class ReferenceCompact : public testing::Test {
 protected:
  void SetUp() override {
    reference::ImgLoadDriver();
    reference::ImgInitialize(1, 20, 20);
    std::memset(reference::g_pwBGRBuff[0], 0x5A, reference::g_anBGRBytes[0]);
  }
  void TearDown() override { reference::ImgUnloadDriver(); }

  using Bytes = void (*)(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                         uint32_t, uint32_t, const uint8_t*, uint8_t*);
  static constexpr Bytes kBytes[] = {reference::ImageColorNearNeighbor,
                                     reference::ImageColorDemosaicAHD};
  using Samples16 = void (*)(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                             uint32_t, uint32_t, uint32_t, const uint16_t*, uint8_t*, uint32_t,
                             uint32_t);
  static constexpr Samples16 kSamples16[] = {reference::ImageColorNearNeighbor,
                                             reference::ImageColorDemosaicAHD};
};

// Blue 50, green 100, red 200 at their sites.
template <class T>
Mosaic<T> coloured(uint32_t nBayer, uint32_t w, uint32_t h) {
  Mosaic<T> frame(w, h, 100);
  for (uint32_t y = 0; y < h; ++y) {
    for (uint32_t x = 0; x < w; ++x) {
      const uint32_t r = (nBayer + y) & 1, c = ((nBayer >> 1) + x) & 1;
      if (r != c) frame.at(x, y) = r == 1 ? 50 : 200;
    }
  }
  return frame;
}

TEST_F(ReferenceCompact, DeliversBlueGreenRed) {
  for (uint32_t nBayer = 0; nBayer < 4; ++nBayer) {
    const Mosaic<uint8_t> bytes = coloured<uint8_t>(nBayer, 9, 8);
    const Mosaic<uint16_t> samples16 = coloured<uint16_t>(nBayer, 9, 8);
    for (int k = 0; k < 2; ++k) {
      std::vector<uint8_t> out(9 * 8 * 3), other(9 * 8 * 3);
      kBytes[k](0, 9, nBayer, 0, 2, 0, 0, 9, 8, bytes.samples.data(), out.data());
      kSamples16[k](0, 9, nBayer, 0, 2, 0, 0, 0, 9, 8, samples16.samples.data(), other.data(), 24,
                    8);
      for (size_t at = 0; at < out.size(); ++at)
        EXPECT_EQ(out[at], at % 3 == 0 ? 50 : at % 3 == 1 ? 100 : 200);
      EXPECT_EQ(other, out);
    }
  }
}

// (1 + 2 + 1) >> 1 is 2 at full scale; ten-bit samples are scaled up by 64 and truncated on the way
// back.
TEST_F(ReferenceCompact, RoundsAtTheScaleOfSixteenBits) {
  Mosaic<uint16_t> frame(4, 4, 0);
  frame.at(0, 1) = 1;  // blue beside the green site (1, 1)
  frame.at(2, 1) = 2;
  const auto blue = [&](uint32_t nSrcBits) {
    std::vector<uint8_t> out(4 * 4 * 6);
    reference::ImgConvert16(1, 7, 2, GRBG, 0, 3 * nSrcBits, 0, 4, 4, 0, 0, 4, 4,
                            frame.samples.data(), out.data(), nSrcBits, 0);
    return out[6 * 5];
  };
  EXPECT_EQ(blue(16), 2);
  EXPECT_EQ(blue(10), 1);
}

// A region two rows down: its rows 2 .. 5 are converted and come first, the rest is stale.
TEST_F(ReferenceCompact, ConvertsFewerRowsBelowTheFirst) {
  const Mosaic<uint8_t> frame = coloured<uint8_t>(RGGB, 8, 6);
  std::vector<uint8_t> out(8 * 6 * 3);
  for (Bytes demosaic : kBytes) {
    std::memset(reference::g_pwBGRBuff[0], 0x5A, reference::g_anBGRBytes[0]);
    demosaic(0, 8, RGGB, 0, 2, 0, 2, 8, 6, frame.samples.data(), out.data());
    for (size_t k = 1; k < 8 * 4 * 3; k += 3) EXPECT_EQ(out[k], 100);
    EXPECT_THAT(std::vector<uint8_t>(out.begin() + 8 * 4 * 3, out.end()), Each(0x5A));
  }
  reference::ImageColorNearNeighbor(0, 8, RGGB, 0, 2, 0, 6, 8, 6, frame.samples.data(), out.data());
  EXPECT_EQ(out[0], 50);  // left by the call before
}

TEST_F(ReferenceCompact, FollowsTheAbsoluteColumn) {
  const Mosaic<uint8_t> frame = coloured<uint8_t>(GBRG, 12, 6);
  std::vector<uint8_t> out(5 * 6 * 3);
  for (Bytes demosaic : kBytes) {
    demosaic(0, 12, GBRG, 0, 2, 3, 0, 5, 6, frame.samples.data(), out.data());
    for (size_t k = 0; k < out.size(); k += 3) EXPECT_EQ(out[k], 50);
  }
}

TEST_F(ReferenceCompact, ShowsTheBufferWhereThePrimitiveRejects) {
  const Mosaic<uint8_t> frame = coloured<uint8_t>(GRBG, 8, 4);
  std::vector<uint8_t> row(8 * 3), four(8 * 4 * 3);
  reference::ImageColorNearNeighbor(0, 8, GRBG, 0, 2, 0, 0, 8, 1, frame.samples.data(), row.data());
  EXPECT_THAT(row, Each(0x5A));
  reference::ImageColorDemosaicAHD(0, 8, GRBG, 0, 2, 0, 0, 8, 4, frame.samples.data(), four.data());
  EXPECT_THAT(four, Each(0x5A));
}

// The frame is a copy of whole rows: the whole allocation comes back, also beyond the image.
TEST_F(ReferenceCompact, CopiesWholeRowsBack) {
  const Mosaic<uint16_t> frame(10, 4, 300);
  std::vector<uint8_t> out(4 * 4 * 3);
  reference::ImageColorNearNeighbor(0, 10, GRBG, 0, 2, 0, 0, 0, 4, 4, frame.samples.data(),
                                    out.data(), 24, 10);
  const uint16_t* const work = reference::g_pwBGRBuff[0];
  EXPECT_EQ(work[3 * 4 * 4 - 1], 300);
  EXPECT_NE(work[3 * 10 * 4 - 1], 0x5A5A);
  EXPECT_EQ(work[3 * 10 * 4], 0x5A5A);
  EXPECT_EQ(frame.samples.back(), 300);
}

}  // namespace
