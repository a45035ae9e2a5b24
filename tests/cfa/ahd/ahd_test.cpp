// Adaptive homogeneity-directed demosaicing: what a region covers, and the choice between the
// images.
#include "tests/cfa/primitives.h"
#include "tests/levels.h"
#include "tests/reference/cfa.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;

VISTREL_LEVEL_SUITE(Ahd);

template <class T>
void expectSame(const Rgb<T>& a, int x, int y, const Rgb<T>& b, CfaRect rect) {
  for (int j = 0; j < rect.height; ++j)
    for (int i = 0; i < rect.width; ++i)
      ASSERT_EQ(a.at(x + i, y + j), b.at(rect.x + i, rect.y + j)) << i << ' ' << j;
}

// Regions smaller than the bands along the frame's edges, and next to them.
TEST_P(Ahd, NothingOutsideTheRegionIsWritten) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(34, 34, 3, 80);
  for (const CfaRect& roi :
       {CfaRect{30, 30, 3, 3}, CfaRect{0, 0, 20, 3}, CfaRect{0, 0, 3, 20}, CfaRect{4, 0, 8, 3},
        CfaRect{0, 31, 3, 3}, CfaRect{5, 5, 1, 1}, CfaRect{29, 5, 5, 20}, CfaRect{6, 6, 22, 22}})
    EXPECT_TRUE(homogeneous(m, 1, roi).hasOnly(roi)) << roi.x << ' ' << roi.y;
  EXPECT_TRUE(
      homogeneous(noiseMosaic<uint8_t>(34, 5, 4, 80), 1, {0, 0, 34, 5}).hasOnly({0, 0, 34, 5}));
}

// Interior and bands meet without a visible boundary, whatever site the region begins at: a gray
// scene of columns is exact in the image along columns, and that image is chosen.
TEST_P(Ahd, AGraySceneThatChangesAlongOneAxisIsExact) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    const Mosaic<T> line = noiseMosaic<T>(40, 1, 5, 10000);
    Mosaic<T> columns(40, 23, 0), rows(23, 40, 0);
    for (int k = 0; k < 40; ++k)
      for (int i = 0; i < 23; ++i) columns.at(k, i) = rows.at(i, k) = static_cast<T>(line.at(k, 0));
    for (int grid = 0; grid < 4; ++grid) {
      const Rgb<T> upright = homogeneous(columns, grid), lying = homogeneous(rows, grid);
      for (int k = 0; k < 40; ++k)
        for (int i = 0; i < 23; ++i) {
          EXPECT_THAT(upright.at(k, i), Each(line.at(k, 0)));
          EXPECT_THAT(lying.at(i, k), Each(line.at(k, 0)));
        }
    }
  });
}

TEST_P(Ahd, AFlatFrameStaysFlat) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    for (int value : {0, 77, kLargest<T>}) {
      const Rgb<T> rgb = homogeneous(Mosaic<T>(41, 13, static_cast<unsigned>(value)), 3);
      for (int y = 0; y < 13; ++y)
        for (int x = 0; x < 41; ++x) EXPECT_THAT(rgb.at(x, y), Each(value));
    }
  });
}

// In a frame of 34 by 30 the interior begins at the first red site from (5, 5) on; the right band
// begins at xEnd, since the interior's width is even. There, as in a region of one pixel, a tie is
// the image along rows.
struct Interior {
  int grid, x, y, xEnd, yEnd;
};
constexpr Interior kInteriors[] = {{CFA_GRID_RGGB, 6, 6, 28, 24},
                                   {CFA_GRID_BGGR, 5, 5, 29, 25},
                                   {CFA_GRID_GBRG, 6, 5, 28, 25},
                                   {CFA_GRID_GRBG, 5, 6, 29, 24}};

TEST_P(Ahd, TheChoiceBeginsAfreshAtEachRectanglesLeftEnd) {
  for (const Interior& interior : kInteriors) {
    const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(34, 30, 8);
    const Rgb<uint8_t> whole = homogeneous(m, interior.grid);
    int inherited = 0;
    for (int y = 0; y < 30; ++y)
      for (int x = 0; x < 34; ++x) {
        const bool isBeside = interior.y <= y && y < interior.yEnd;
        const bool isFresh = x == 0 || (isBeside && (x == interior.x || x == interior.xEnd));
        const auto alone = homogeneous(m, interior.grid, {x, y, 1, 1}).at(x, y);
        EXPECT_TRUE(!isFresh || alone == whole.at(x, y)) << x << ' ' << y;
        inherited += alone != whole.at(x, y);
      }
    EXPECT_GT(inherited, 0);
  }
}

// Differences of chroma whose squares exceed 32 bits: the choice follows the wrapped values.
TEST_P(Ahd, StarkFramesAreChosenAsThePlainFormulasChoose) {
  Mosaic<uint16_t> m = noiseMosaic<uint16_t>(60, 20, 9);
  for (uint16_t& sample : m.samples)
    sample = sample % 3 == 0 ? 65535 : sample % 3 == 1 ? 0 : sample;
  for (int grid = 0; grid < 4; ++grid) {
    Rgb<uint16_t> expected(m.all());
    EXPECT_EQ(reference::ippiDemosaicAHD_16u_C1C3R(m.samples.data(), {0, 0, 60, 20}, {60, 20}, 120,
                                                   expected.data(), expected.stepBytes(), grid,
                                                   nullptr, 0),
              0);
    expectSame(homogeneous(m, grid), 0, 0, expected, m.all());
  }
}

// With five samples per side, one reflection is not enough. What is still outside is not read.
TEST_P(Ahd, WhatLiesBesideTheFrameDoesNotMatter) {
  for (int side : {5, 6})
    for (int grid = 0; grid < 4; ++grid) {
      const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(side, side, 7);
      const Rgb<uint8_t> alone = homogeneous(m, grid);
      for (uint8_t around : {uint8_t{0}, uint8_t{255}}) {
        Mosaic<uint8_t> wide(side + 10, side + 10, around);
        for (int y = 0; y < side; ++y)
          for (int x = 0; x < side; ++x) wide.at(x + 5, y + 5) = static_cast<uint8_t>(m.at(x, y));
        Rgb<uint8_t> rgb(m.all());
        EXPECT_EQ(ippiDemosaicAHD_8u_C1C3R(&wide.at(5, 5), m.all(), m.size(), wide.width,
                                           rgb.data(), rgb.stepBytes(), grid, nullptr, 0),
                  0);
        expectSame(rgb, 0, 0, alone, m.all());
      }
    }
}

}  // namespace
}  // namespace vistrel::core::test
