#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/reference/demosaic.h"
#include "tests/reference/demosaiced.h"
#include "tests/reference/output.h"

namespace {

constexpr uint32_t kWidest = 40, kHighest = 24;

// Blue, green, red of a region after the edge demosaic, 8 bits, unbinned.
struct Edged {
  uint32_t w;
  std::vector<uint8_t> bgr;
  int at(int x, int y, int c) const {
    return bgr[static_cast<size_t>(3 * (y * static_cast<int>(w) + x) + c)];
  }
};

Edged edged(const Mosaic<uint8_t>& frame, uint32_t nThreshold, uint32_t nBayer, uint32_t x,
            uint32_t y, uint32_t w, uint32_t h, int stale = 0) {
  reference::ImgLoadDriver();
  reference::ImgInitialize(1, kWidest, kHighest);
  std::memset(reference::g_pwBGRBuff[0], stale, reference::g_anBGRBytes[0]);
  Edged out{w, std::vector<uint8_t>(size_t{3} * w * h)};
  EXPECT_EQ(reference::ImgConvert8(1, 2, 1 | nThreshold << 8, nBayer, 0, frame.w, frame.h, x, y, w,
                                   h, frame.samples.data(), out.bgr.data(), 8, 0),
            1U);
  reference::ImgUnloadDriver();
  return out;
}

Edged edged(const Mosaic<uint8_t>& frame, uint32_t nThreshold, uint32_t nBayer) {
  return edged(frame, nThreshold, nBayer, 0, 0, frame.w, frame.h);
}

Mosaic<uint8_t> noise(uint32_t w, uint32_t h) {
  Mosaic<uint8_t> frame(w, h, 0);
  for (uint32_t y = 0; y < h; ++y)
    for (uint32_t x = 0; x < w; ++x)
      frame.at(x, y) = static_cast<uint8_t>(((x * 73 + y * 151 + 11) * 2654435761U) >> 24);
  return frame;
}

TEST(ReferenceEdge, KeepsAFlatUpToTopAndBottomButNotToTheSides) {
  const Edged out = edged(Mosaic<uint8_t>(16, 8, 100), 255, GRBG);
  for (int y = 0; y < 8; ++y) {
    for (int x = 3; x < 13; ++x)
      for (int c = 0; c < 3; ++c) EXPECT_EQ(out.at(x, y, c), 100) << x << ' ' << y;
    // Green sites at the sides see zeros as green: a range of 100 above 63, a mean of 75.
    EXPECT_EQ(out.at(y % 2 == 0 ? 0 : 15, y, 1), (75 >> 1) + (75 >> 2) + (100 >> 2)) << y;
  }
}

TEST(ReferenceEdge, TakesItsThresholdFromTheSelectorsSecondByte) {
  Mosaic<uint8_t> frame(16, 8, 0);
  frame.at(8, 4) = 255;
  const auto green = [&](uint32_t nThreshold) {
    return edged(frame, nThreshold, GRBG).at(8, 4, 1);
  };
  EXPECT_EQ(green(0), 255);
  EXPECT_EQ(green(254), 255);
  EXPECT_EQ(green(255), 221);  // above 191
  frame.at(8, 4) = 191;        // A = 95, no longer above 191 but above 127
  EXPECT_EQ(green(255), (191 >> 1) + (95 >> 1));
}

// Twelve bits, threshold 100: 4095 * 100 / 255 = 1605, then 1203, 802 and 401.
TEST(ReferenceEdge, ScalesTheThresholdToTheSourceBits) {
  const auto green = [](uint16_t rise) {
    Mosaic<uint16_t> frame(16, 8, 1000);
    frame.at(8, 4) = static_cast<uint16_t>(1000 + rise);
    reference::ImgLoadDriver();
    reference::ImgInitialize(1, 16, 8);
    std::vector<uint8_t> out(16 * 8 * 6);
    reference::ImgConvert16(1, 7, 1 | 100 << 8, GRBG, 0, 36, 0, 16, 8, 0, 0, 16, 8,
                            frame.samples.data(), out.data(), 12, 0);
    uint16_t word;
    std::memcpy(&word, out.data() + 2 * (3 * (4 * 16 + 8) + 1), 2);
    reference::ImgUnloadDriver();
    return int{word};
  };
  const auto A = [](int C) { return (2 * C + 1000 + 1000) >> 2; };
  EXPECT_EQ(green(1606), 2606);
  EXPECT_EQ(green(1605), (2605 >> 2) + (2605 >> 1) + (A(2605) >> 2));
  EXPECT_EQ(green(1204), (2204 >> 2) + (2204 >> 1) + (A(2204) >> 2));
  EXPECT_EQ(green(1203), (2203 >> 1) + (A(2203) >> 1));
  EXPECT_EQ(green(802), (A(1802) >> 1) + (A(1802) >> 2) + (1802 >> 2));
  EXPECT_EQ(green(401), A(1401));
}

// The row above the first is the second: a frame whose rows are repeated in pairs further up and
// down gives the same rows inside.
TEST(ReferenceEdge, RepeatsTheFirstAndLastRowPair) {
  const Mosaic<uint8_t> frame = noise(16, 6);
  Mosaic<uint8_t> longer(16, 10, 0);
  for (uint32_t y = 0; y < 10; ++y)
    for (uint32_t x = 0; x < 16; ++x) {
      const uint32_t from = y < 2 ? y : y < 8 ? y - 2 : y - 4;
      longer.at(x, y) = frame.samples[from * 16 + x];
    }
  const Edged a = edged(frame, 40, RGGB), b = edged(longer, 40, RGGB);
  for (int y = 0; y < 6; ++y)
    for (int x = 0; x < 16; ++x)
      for (int c = 0; c < 3; ++c) EXPECT_EQ(a.at(x, y, c), b.at(x, y + 2, c));
}

// Nine columns: the second block of an upper row runs into the lower row's first three pixels.
TEST(ReferenceEdge, WrapsIntoTheLowerRowOfAPair) {
  const Mosaic<uint8_t> frame = noise(16, 8);
  const Edged wide = edged(frame, 40, GRBG, 0, 0, 16, 8);
  const Edged narrow = edged(frame, 40, GRBG, 0, 0, 9, 8);
  for (int y = 0; y < 8; ++y) {
    int differing = 0;
    for (int x = 0; x < 6; ++x)
      for (int c = 0; c < 3; ++c)
        if (wide.at(x, y, c) != narrow.at(x, y, c)) {
          ++differing;
          EXPECT_LT(x, 3);
        }
    EXPECT_EQ(differing > 0, y % 2 == 1) << y;
  }
}

TEST(ReferenceEdge, LeavesTheRegionsColumnOutOfThePhase) {
  const Mosaic<uint8_t> frame = noise(17, 8);
  Mosaic<uint8_t> shifted(16, 8, 0);
  for (uint32_t y = 0; y < 8; ++y)
    for (uint32_t x = 0; x < 16; ++x) shifted.at(x, y) = frame.samples[y * 17 + x + 1];
  EXPECT_EQ(edged(frame, 40, GRBG, 1, 0, 16, 8).bgr, edged(shifted, 40, GRBG).bgr);
}

// The first y0 rows of the output are what the buffer held.
TEST(ReferenceEdge, ShowsStaleRowsAboveTheRegionsOrigin) {
  const Edged out = edged(noise(16, 8), 40, GRBG, 0, 3, 16, 8, 0x5A);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 16; ++x)
      for (int c = 0; c < 3; ++c) EXPECT_EQ(out.at(x, y, c), 0x5A);
  int fresh = 0;
  for (int x = 0; x < 16; ++x) fresh += out.at(x, 3, 1) != 0x5A;
  EXPECT_GT(fresh, 8);
}

// A buffer with capacity for four and a half rows of the guarded layout, and more behind it.
TEST(ReferenceEdge, WritesNothingPastTheBuffer) {
  const Mosaic<uint8_t> frame = noise(16, 8);
  std::vector<uint16_t> memory(20 * 3 * 12 / 2, 0x5A5A);
  std::vector<uint8_t> out(16 * 8 * 3);
  reference::g_pwBGRBuff[0] = memory.data();
  reference::g_anBGRBytes[0] = 60 * 4 + 30;
  reference::ImageColorDemosaicEx(0, 40, 16, GRBG, 0, 7, 0, 0, 16, 8, frame.samples.data(),
                                  out.data());
  reference::g_pwBGRBuff[0] = nullptr;
  const uint8_t* const bytes = reinterpret_cast<const uint8_t*>(memory.data());
  int written = 0;
  for (int k = 60 * 4; k < 60 * 4 + 30; ++k) written += bytes[k] != 0x5A;
  EXPECT_GT(written, 15);
  for (int k = 60 * 4 + 30; k < 60 * 12; ++k) EXPECT_EQ(bytes[k], 0x5A);
}

}  // namespace
