// How the mosaic is scattered into the work buffer, and the guard around it.
#include "demosaic/work_buffer.h"

#include <array>
#include <cstdlib>

#include "tests/demosaic/by_name.h"
#include "tests/demosaic/guarded.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;

// Scatters a region of whole pixels, F of them to each binned one, over a preset buffer.
template <class T>
std::vector<T> scatter(const Mosaic<T>& m, T preset = 0xEE, uint32_t F = 1) {
  std::vector<T> buffer(m.samples(), preset);
  PrepareBGRBuffer(m.imgWidth, m.bayer, F - 1, static_cast<uint32_t>(m.x0) / F,
                   static_cast<uint32_t>(m.y0) / F, static_cast<uint32_t>(m.Wf) / F,
                   static_cast<uint32_t>(m.Hf) / F, m.frame.data(), buffer.data());
  return buffer;
}

template <class T>
std::array<unsigned, 3> pixel(const Mosaic<T>& m, const std::vector<T>& buffer, int i, int j) {
  const T* p = &buffer.at(indexOf(m, i, j, 0));
  return {p[0], p[1], p[2]};
}
using Pixel = std::array<unsigned, 3>;

Mosaic<uint8_t> ramp(uint32_t bayer, int Wf, int Hf) {  // sample (x, y) is 10 * y + x + 1
  const auto at = [](uint32_t x, uint32_t y) { return 10 * y + x + 1; };
  const uint32_t w = static_cast<uint32_t>(Wf), h = static_cast<uint32_t>(Hf);
  return {painted<uint8_t>(w, h, at), w, bayer, 0, 0, Wf, Hf};
}

TEST(Scatter, EachPhaseBeginsAsItsNameSays) {
  struct Phase {
    uint32_t bayer;
    const char* block;  // rows 0 and 1, columns 0 and 1
  };
  for (const Phase& phase : {Phase{0, "GRBG"}, {1, "BGGR"}, {2, "RGGB"}, {3, "GBRG"}}) {
    const auto m = ramp(phase.bayer, 4, 4);
    const Bytes buffer = scatter(m);
    for (int k = 0; k < 4; ++k) {
      Pixel expected{};
      const char colour = phase.block[k];
      expected[colour == 'B' ? 0 : colour == 'G' ? 1 : 2] = 1 + 10 * (k / 2) + k % 2;
      EXPECT_EQ(pixel(m, buffer, k % 2, k / 2), expected) << phase.bayer << ", " << k;
    }
  }
}

TEST(Scatter, OnlyTheTwoLowBitsOfThePhaseCount) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer)
    for (uint32_t high : {4u, 8u, 0x80000000u, 0xFFFFFFFCu})
      EXPECT_EQ(scatter(ramp(bayer + high, 6, 5)), scatter(ramp(bayer, 6, 5)));
}

TEST(Scatter, SmoothsInnerGreensByTheFourDiagonals) {
  Mosaic<uint8_t> m{Bytes(25), 5, BAYER_GRBG, 0, 0, 5, 5};
  m.frame = {100, 9, 101, 9, 0, 9, 50, 9, 9, 9, 102, 9, 107, 9, 0, 9, 0, 9, 0, 9, 0, 9, 0, 9, 0};
  // (100 + 101 + 102 + 107 + 4 * 50) >> 3 is 610 >> 3
  EXPECT_EQ(pixel(m, scatter(m), 1, 1), (Pixel{0, 76, 0}));
}

TEST(Scatter, TheSmoothingTruncates) {
  Mosaic<uint8_t> m{flat<uint8_t>(9, 1), 3, BAYER_GRBG, 0, 0, 3, 3};
  EXPECT_EQ(pixel(m, scatter(m), 1, 1)[1], 1u);
  m.frame[0] = 0;  // 7 >> 3
  EXPECT_EQ(pixel(m, scatter(m), 1, 1)[1], 0u);
}

TEST(Scatter, TheSmoothingReadsTheSourceAndNotSmoothedValues) {
  // A single green of 80 at (2, 2): its diagonals get 80 >> 3, and nothing goes further.
  Mosaic<uint8_t> m{impulse<uint8_t>(81, 2 * 9 + 2, 80), 9, BAYER_GRBG, 0, 0, 9, 9};
  const Bytes buffer = scatter(m);
  for (int j = 0; j < 9; ++j)
    for (int i = 0; i < 9; ++i) {
      const unsigned green = i == 2 && j == 2                               ? 40
                             : std::abs(i - 2) == 1 && std::abs(j - 2) == 1 ? 10
                                                                            : 0;
      EXPECT_EQ(pixel(m, buffer, i, j), (Pixel{0, green, 0})) << i << ", " << j;
    }
}

TEST(Scatter, TheOutermostRingStaysRaw) {
  // The region lies inside the frame: its outermost ring has neighbours, but is not smoothed.
  Mosaic<uint8_t> m = noiseMosaic<uint8_t>(BAYER_GRBG, 3, 0, 8, 6, 255, 3);
  const Bytes buffer = scatter(m);
  int smoothed = 0;
  for (int j = 0; j < 6; ++j)
    for (int i = 0; i < 8; ++i) {
      if (!isGreen(m.site(i, j))) continue;
      const unsigned green = pixel(m, buffer, i, j)[1];
      if (green == m.source(i, j)) continue;
      EXPECT_TRUE(m.interior(i, j)) << i << ", " << j;
      ++smoothed;
    }
  EXPECT_GE(smoothed, 10);
}

TEST(Scatter, RedAndBlueAreStoredAsTheyAre) {
  const auto m = noiseMosaic<uint16_t>(BAYER_RGGB, 0, 0, 20, 20, 65535, 4);
  const Samples16 buffer = scatter<uint16_t>(m);
  for (int j = 0; j < 20; ++j)
    for (int i = 0; i < 20; ++i) {
      if (isGreen(m.site(i, j))) continue;
      const bool red = m.site(i, j) == SITE_R;
      const unsigned s = m.source(i, j);
      EXPECT_EQ(pixel(m, buffer, i, j), (Pixel{red ? 0 : s, 0, red ? s : 0}));
    }
}

TEST(Scatter, WhiteStaysWhite) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    const Mosaic<uint8_t> bytes{flat<uint8_t>(100, 255), 10, bayer, 0, 0, 10, 10};
    const Mosaic<uint16_t> samples16{flat<uint16_t>(100, 65535), 10, bayer, 0, 0, 10, 10};
    const Bytes b = scatter(bytes);
    const Samples16 w = scatter<uint16_t>(samples16);
    for (int j = -2; j < 12; ++j)
      for (int i = -2; i < 12; ++i) {
        const Pixel p = pixel(bytes, b, i, j), q = pixel(samples16, w, i, j);
        EXPECT_EQ(p[0] + p[1] + p[2], 255u);
        EXPECT_EQ(q[0] + q[1] + q[2], 65535u);
      }
  }
}

TEST(Scatter, AnOddOriginMovesThePhaseAlong) {
  for (uint32_t F : {1u, 3u}) {
    const int side = 6 * static_cast<int>(F), step = static_cast<int>(F);
    Mosaic<uint8_t> m = noiseMosaic<uint8_t>(BAYER_GBRG, 0, 0, side + step, side, 255, 5);
    m.Wf = side;
    Mosaic<uint8_t> right = m;
    right.x0 = step;
    const Bytes here = scatter<uint8_t>(m, 0, F), there = scatter<uint8_t>(right, 0, F);
    for (int j = 1; j < side - 1; ++j)
      for (int i = step + 1; i < side - 1; ++i)
        EXPECT_EQ(pixel(right, there, i - step, j), pixel(m, here, i, j)) << i << ", " << j;
  }
}

TEST(Scatter, TheRowOriginMovesThePhaseAndNotTheSource) {
  for (uint32_t F : {1u, 2u, 3u, 4u})
    for (int roiY : {1, 2, 3}) {
      const int side = 12, y0 = roiY * static_cast<int>(F);
      Mosaic<uint8_t> m = noiseMosaic<uint8_t>(BAYER_RGGB, 0, y0, side, side, 255, 6);
      Mosaic<uint8_t> top = m;
      top.y0 = 0;
      top.bayer = m.bayer ^ (static_cast<uint32_t>(y0) & 1);
      EXPECT_EQ(scatter<uint8_t>(m, 0, F), scatter<uint8_t>(top, 0, F));
      EXPECT_EQ(scatter<uint8_t>(m, 0, F), m.scatteredBuffer());
    }
}

TEST(Guard, IsAShiftByTwoAndNotAMirror) {
  const auto m = ramp(BAYER_GRBG, 8, 6);
  const Bytes buffer = scatter(m);
  for (int j = 0; j < 6; ++j) {
    EXPECT_EQ(pixel(m, buffer, -2, j), pixel(m, buffer, 0, j));
    EXPECT_EQ(pixel(m, buffer, -1, j), pixel(m, buffer, 1, j));
    EXPECT_EQ(pixel(m, buffer, 8, j), pixel(m, buffer, 6, j));
    EXPECT_EQ(pixel(m, buffer, 9, j), pixel(m, buffer, 7, j));
  }
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(pixel(m, buffer, i, -2), pixel(m, buffer, i, 0));
    EXPECT_EQ(pixel(m, buffer, i, -1), pixel(m, buffer, i, 1));
    EXPECT_EQ(pixel(m, buffer, i, 6), pixel(m, buffer, i, 4));
    EXPECT_EQ(pixel(m, buffer, i, 7), pixel(m, buffer, i, 5));
  }
  EXPECT_EQ(pixel(m, buffer, -2, 0), (Pixel{0, 1, 0}));  // a mirror would have 3
  EXPECT_EQ(pixel(m, buffer, 0, -2), (Pixel{0, 1, 0}));  // and 21
  EXPECT_EQ(pixel(m, buffer, 9, 0), (Pixel{0, 0, 8}));   // and 6
  EXPECT_EQ(pixel(m, buffer, 0, 7), (Pixel{51, 0, 0}));  // and 31
}

TEST(Guard, CornersAreCopiesOfTheImagesCorners) {
  const auto m = ramp(BAYER_BGGR, 7, 5);
  const Bytes buffer = scatter(m);
  for (int dj : {0, 1})
    for (int di : {0, 1}) {
      EXPECT_EQ(pixel(m, buffer, -2 + di, -2 + dj), pixel(m, buffer, di, dj));
      EXPECT_EQ(pixel(m, buffer, 7 + di, -2 + dj), pixel(m, buffer, 5 + di, dj));
      EXPECT_EQ(pixel(m, buffer, -2 + di, 5 + dj), pixel(m, buffer, di, 3 + dj));
      EXPECT_EQ(pixel(m, buffer, 7 + di, 5 + dj), pixel(m, buffer, 5 + di, 3 + dj));
    }
}

TEST(Guard, HoldsSmoothedGreens) {
  const auto m = noiseMosaic<uint8_t>(BAYER_GRBG, 0, 0, 9, 9, 255, 7);
  const Bytes buffer = scatter(m);
  EXPECT_NE(m.sensed(1, 1), m.source(1, 1));
  EXPECT_EQ(pixel(m, buffer, -1, -1), (Pixel{0, m.sensed(1, 1), 0}));
}

template <class T>
void everySampleIsWritten(unsigned top) {
  for (int Hf : {2, 3, 4, 7})
    for (int Wf : {2, 3, 4, 5, 15, 16, 17, 33, 64, 129})
      for (uint32_t bayer = 0; bayer < 4; ++bayer)
        for (int x0 : {0, 1}) {
          const auto m = noiseMosaic<T>(bayer, x0, 0, Wf, Hf, top, 8);
          ASSERT_EQ(scatter<T>(m, 0xEE), m.scatteredBuffer()) << Wf << " x " << Hf;
        }
}

TEST(Scatter, WritesEverySampleOfBytes) { everySampleIsWritten<uint8_t>(255); }
TEST(Scatter, WritesEverySampleOfSixteenBitSamples) { everySampleIsWritten<uint16_t>(65535); }

// Below two pixels, the copies take what the buffer held, in this order: left, right, top, bottom.
TEST(Stale, OneRowCopiesTheRowBelowItIntoTheGuard) {
  Mosaic<uint8_t> m{{1, 2, 3, 4}, 4, BAYER_GRBG, 0, 0, 4, 1};
  Bytes buffer(m.samples());
  for (size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<uint8_t>(100 + i / 24);
  PrepareBGRBuffer(4, m.bayer, 0, 0, 0, 4, 1, m.frame.data(), buffer.data());
  const uint8_t row[24] = {0, 1, 0, 0, 0, 2, 0, 1, 0, 0, 0, 2, 0, 3, 0, 0, 0, 4, 0, 3, 0, 0, 0, 4};
  const auto rowOf = [&](size_t r) { return Bytes(&buffer[24 * r], &buffer[24 * r] + 24); };
  EXPECT_THAT(rowOf(0), ElementsAreArray(row));
  EXPECT_THAT(rowOf(1), Each(103));
  EXPECT_THAT(rowOf(2), ElementsAreArray(row));
  EXPECT_THAT(rowOf(3), Each(103));
  EXPECT_THAT(rowOf(4), ElementsAreArray(row));
}

TEST(Stale, OneColumnCopiesThePixelBesideItIntoTheGuard) {
  Mosaic<uint8_t> m{{5, 6}, 1, BAYER_GRBG, 0, 0, 1, 2};
  Bytes buffer(m.samples());
  for (size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<uint8_t>(100 + i);
  PrepareBGRBuffer(1, m.bayer, 0, 0, 0, 1, 2, m.frame.data(), buffer.data());
  const auto rowOf = [&](size_t r) { return Bytes(&buffer[15 * r], &buffer[15 * r] + 15); };
  // Pixel 3 of row 2 held 139, 140, 141; pixel 1 gets it, and gives it back to pixel 3.
  EXPECT_THAT(rowOf(2), ElementsAre(0, 5, 0, 139, 140, 141, 0, 5, 0, 139, 140, 141, 0, 5, 0));
  EXPECT_THAT(rowOf(3), ElementsAre(6, 0, 0, 154, 155, 156, 6, 0, 0, 154, 155, 156, 6, 0, 0));
  for (size_t r : {0u, 4u}) EXPECT_EQ(rowOf(r), rowOf(2));
  for (size_t r : {1u, 5u}) EXPECT_EQ(rowOf(r), rowOf(3));
}

TEST(Stale, NoRowsStillCopyTheGuard) {
  Bytes buffer(4 * 24);
  for (size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<uint8_t>(i);
  const Bytes before = buffer;
  PrepareBGRBuffer(4, 0, 0, 0, 0, 4, 0, before.data(), buffer.data());
  EXPECT_TRUE(std::equal(before.begin() + 48, before.end(), buffer.begin()));
  EXPECT_TRUE(std::equal(before.begin() + 48, before.end(), buffer.begin() + 48));
}

}  // namespace
}  // namespace vistrel::core::test
