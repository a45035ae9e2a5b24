// Adaptive homogeneity-directed demosaicing: what is refused, what a region covers, the formulas of
// both images, and the choice between them.
#include "tests/cfa/primitives.h"
#include "tests/levels.h"
#include "tests/reference/cfa.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(Ahd);

TEST(AhdStatus, TellsTheFirstOfSeveralFaults) {
  uint8_t samples[25] = {}, pixel[3] = {1, 2, 3};
  const auto status = [&](const uint8_t* from, CfaSize size, uint8_t* to, int grid) {
    return ippiDemosaicAHD_8u_C1C3R(from, {0, 0, 1, 1}, size, 5, to, 3, grid, nullptr, 0);
  };
  EXPECT_EQ(status(nullptr, {4, 4}, pixel, 4), -8);
  EXPECT_EQ(status(samples, {4, 4}, nullptr, 4), -8);
  EXPECT_EQ(status(samples, {4, 5}, pixel, 4), -6);
  EXPECT_EQ(status(samples, {5, 4}, pixel, 4), -6);
  EXPECT_EQ(status(samples, {5, 5}, pixel, 4), -5);
  EXPECT_EQ(status(samples, {5, 5}, pixel, -1), -5);
  EXPECT_THAT(pixel, ElementsAre(1, 2, 3));
  EXPECT_EQ(status(samples, {5, 5}, pixel, 0), 0);  // without scratch
  EXPECT_THAT(pixel, Each(0));
}

TEST(AhdStatus, LooksAtTheFrameAndNotAtTheRegion) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    const auto status = [](int w, int h, CfaRect roi) {
      Rgb<T> rgb(roi);
      const int32_t result = demosaicAhd(Mosaic<T>(w, h, 9), roi, 0, rgb);
      EXPECT_EQ(rgb.isUntouched(), result != 0);
      return result;
    };
    EXPECT_EQ(status(4, 100, {0, 0, 2, 2}), -6);
    EXPECT_EQ(status(100, 4, {0, 0, 100, 4}), -6);
    EXPECT_EQ(status(5, 5, {0, 0, 5, 5}), 0);
    EXPECT_EQ(status(5, 5, {4, 4, 1, 1}), 0);
  });
}

TEST_P(Ahd, ARegionClippedToNothingSucceeds) {
  for (const CfaRect& roi : {CfaRect{9, 0, 3, 3}, CfaRect{0, 8, 3, 3}, CfaRect{40, 50, 3, 3},
                             CfaRect{2, 2, 0, 3}, CfaRect{2, 2, 3, -1}})
    EXPECT_TRUE(homogeneous(noiseMosaic<uint8_t>(9, 8, 1), 0, roi).isUntouched());
}

template <class T>
void expectSame(const Rgb<T>& a, int x, int y, const Rgb<T>& b, CfaRect rect) {
  for (int j = 0; j < rect.height; ++j)
    for (int i = 0; i < rect.width; ++i)
      ASSERT_EQ(a.at(x + i, y + j), b.at(rect.x + i, rect.y + j)) << i << ' ' << j;
}

// quirk: origin-moves-region
TEST_P(Ahd, ANegativeOriginMovesTheRegionIn) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(30, 12, 2, 80);
  const Rgb<uint8_t> moved = homogeneous(m, 1, {-3, -2, 10, 6});
  EXPECT_TRUE(moved.hasOnly({-3, -2, 10, 6}));  // as large as it came
  expectSame(moved, -3, -2, homogeneous(m, 1, {0, 0, 10, 6}), {0, 0, 10, 6});
}

// Regions smaller than the bands along the frame's edges, and beside them.
TEST_P(Ahd, NothingOutsideTheRegionIsWritten) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(34, 34, 3, 80);
  for (const CfaRect& roi :
       {CfaRect{30, 30, 3, 3}, CfaRect{0, 0, 20, 3}, CfaRect{0, 0, 3, 20}, CfaRect{4, 0, 8, 3},
        CfaRect{0, 31, 3, 3}, CfaRect{5, 5, 1, 1}, CfaRect{29, 5, 5, 20}, CfaRect{6, 6, 22, 22}})
    EXPECT_TRUE(homogeneous(m, 1, roi).hasOnly(roi)) << roi.x << ' ' << roi.y;
  EXPECT_TRUE(
      homogeneous(noiseMosaic<uint8_t>(34, 5, 4, 80), 1, {0, 0, 34, 5}).hasOnly({0, 0, 34, 5}));
}

// Interior and bands meet without a seam, whatever site the region begins on: a gray scene of
// columns is exact in the image along columns, and that is the one chosen.
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

TEST_P(Ahd, SensedSamplesAreNotTouched) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    Mosaic<T> m = noiseMosaic<T>(37, 15, 6);
    for (size_t i = 0; i < m.samples.size(); i += 5) m.samples[i] = kLargest<T>;
    for (int grid = 0; grid < 4; ++grid) {
      const Rgb<T> rgb = homogeneous(m, grid);
      for (int y = 0; y < 15; ++y)
        for (int x = 0; x < 37; ++x)
          EXPECT_EQ(rgb.at(x, y)[static_cast<size_t>(colourAt(grid, x, y))], m.at(x, y));
    }
  });
}

// A frame of RGGB that is its own mirror image at the diagonal. There both images agree, so that
// the formulas show whichever is chosen. The red site in hand is (12, 12).
template <class T>
struct Symmetric {
  Mosaic<T> m;
  explicit Symmetric(unsigned value) : m(25, 25, value) {}
  void set(int x, int y, int value) {
    m.at(12 + x, 12 + y) = m.at(12 + y, 12 + x) = static_cast<T>(value);
  }
  typename Rgb<T>::Pixel centre() const { return homogeneous(m, CFA_GRID_RGGB).at(12, 12); }
};

// Green neighbours a and b, the site itself, its own colour two away.
template <class T>
int greenOf(int a, int b, int c, int l, int r) {
  Symmetric<T> frame(60);
  frame.set(0, 0, c);
  frame.set(-1, 0, a);
  frame.set(1, 0, b);
  frame.set(-2, 0, l);
  frame.set(2, 0, r);
  return frame.centre()[1];
}

TEST_P(Ahd, GreenStaysBetweenItsNeighbours) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(greenOf<T>(10, 20, 0, 100, 100), 10);  // -50 + 15
    EXPECT_EQ(greenOf<T>(20, 10, 0, 100, 100), 10);
    EXPECT_EQ(greenOf<T>(10, 20, 100, 0, 0), 20);  // 50 + 15
    EXPECT_EQ(greenOf<T>(10, 20, 12, 10, 10), 16);
    for (int c : {0, 100, 255}) EXPECT_EQ(greenOf<T>(50, 50, c, 200, 30), 50);
  });
}

TEST_P(Ahd, GreensTwoTermsRoundDownEachByItself) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(greenOf<T>(10, 30, 50, 50, 51), 20 - 1);  // -1 / 4
    EXPECT_EQ(greenOf<T>(10, 30, 50, 48, 49), 20 + 0);  // 3 / 4
    EXPECT_EQ(greenOf<T>(10, 31, 50, 49, 49), 20 + 0);  // 20.5 + 0.5
    EXPECT_EQ(greenOf<T>(10, 31, 50, 50, 51), 20 - 1);
  });
}

TEST_P(Ahd, DifferencesOfColoursRoundDown) {
  atBothDepths([](auto depth) {
    Symmetric<decltype(depth)> frame(100);
    frame.set(1, 1, 99);  // a sum of four differences of -1
    EXPECT_THAT(frame.centre(), ElementsAre(100, 100, 99));
  });
}

// Greens of `beside` round the red site, of `elsewhere` all about; blue everywhere the same. At the
// blue sites green is the mean of both.
template <class T>
int blueOf(int beside, int elsewhere, int blue) {
  Symmetric<T> frame(static_cast<unsigned>(elsewhere));
  for (int y = -12; y <= 12; ++y)
    for (int x = -12; x <= 12; ++x)
      if (x % 2 != 0 && y % 2 != 0) frame.set(x, y, blue);
  frame.set(-1, 0, beside);
  frame.set(1, 0, beside);
  return frame.centre()[2];
}

TEST_P(Ahd, ComputedColoursAreLimitedToTheSamplesRange) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(blueOf<T>(0, 6, 0), 0);                       // 0 + (0 - 3)
    EXPECT_EQ(blueOf<T>(14, 0, kLargest<T>), kLargest<T>);  // 14 + (largest - 7)
    EXPECT_EQ(blueOf<T>(0, 14, kLargest<T>), kLargest<T> - 7);
    EXPECT_EQ(blueOf<T>(6, 0, 0), 3);
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

// Steps of chroma whose squares leave 32 bits: the choice follows what is left of them.
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

// With five samples a side one reflection is not enough. What it leaves outside is not read.
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
