// Nearest neighbours: the formulas inside the frame, at every width and in every rectangle.
#include <cstdlib>

#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(Near);

// An RGGB frame with red at (4, 4) and the given neighbours up to two samples away.
struct Cross {
  int c, n, s, w, e, n2, s2, w2, e2;
};
template <class T>
int greenOf(const Cross& v) {
  Mosaic<T> m(9, 9, 0);
  const auto set = [&](int x, int y, int value) { m.at(x, y) = static_cast<T>(value); };
  set(4, 4, v.c);
  set(4, 3, v.n);
  set(4, 5, v.s);
  set(3, 4, v.w);
  set(5, 4, v.e);
  set(4, 2, v.n2);
  set(4, 6, v.s2);
  set(2, 4, v.w2);
  set(6, 4, v.e2);
  return nearest(m, CFA_GRID_RGGB).at(4, 4)[1];
}

TEST_P(Near, GreenFollowsTheSmallerGradientAndRoundsUp) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    // Of up and down 10 and 21, of left and right 30 and 61.
    EXPECT_EQ(greenOf<T>({0, 10, 21, 30, 61, 50, 54, 50, 55}), (10 + 21 + 1) >> 1);
    EXPECT_EQ(greenOf<T>({0, 10, 21, 30, 61, 55, 50, 54, 50}), (30 + 61 + 1) >> 1);
    EXPECT_EQ(greenOf<T>({0, 10, 21, 30, 61, 0, 200, 0, 201}), 16);
    EXPECT_EQ(greenOf<T>({0, 10, 21, 30, 61, 201, 0, 0, 200}), 46);
  });
}

TEST_P(Near, EqualGradientsGiveTheMeanOfFour) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    EXPECT_EQ(greenOf<T>({0, 10, 21, 30, 61, 50, 54, 54, 50}), (10 + 21 + 30 + 61 + 2) >> 2);
    for (int low = 0; low < 4; ++low)
      EXPECT_EQ(greenOf<T>({0, 10, 20, 30, 40 + low, 7, 7, 9, 9}), (100 + low + 2) >> 2);
    EXPECT_EQ(greenOf<T>({0, 0, 0, 0, kLargest<T>, 0, 0, 0, 0}), (kLargest<T> + 2) >> 2);
    EXPECT_EQ(greenOf<T>({0, kLargest<T>, kLargest<T>, kLargest<T>, kLargest<T>, 1, 1, 2, 2}),
              kLargest<T>);
  });
}

TEST_P(Near, TheSiteItselfHasNoPartInItsGreen) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    for (int c : {0, 1, 100, kLargest<T>})
      EXPECT_EQ(greenOf<T>({c, 10, 21, 30, 61, 50, 54, 50, 55}), 16);
  });
}

TEST_P(Near, AFlatFrameStaysFlat) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    for (int value : {0, 1, 77, kLargest<T>})
      for (int grid = 0; grid < 4; ++grid) {
        const Rgb<T> rgb = nearest(Mosaic<T>(41, 7, static_cast<unsigned>(value)), grid);
        for (int y = 0; y < 7; ++y)
          for (int x = 0; x < 41; ++x) EXPECT_THAT(rgb.at(x, y), ElementsAre(value, value, value));
      }
  });
}

TEST_P(Near, GreenFollowsAStrongUprightEdge) {
  Mosaic<uint8_t> m(10, 9, 10);
  for (int y = 0; y < 9; ++y)
    for (int x = 5; x < 10; ++x) m.at(x, y) = 200;
  const Rgb<uint8_t> rgb = nearest(m, CFA_GRID_RGGB);
  EXPECT_EQ(rgb.at(4, 4)[1], 10);   // red: 10 to the left, 200 to the right
  EXPECT_EQ(rgb.at(5, 5)[1], 200);  // blue
}

// In a frame of five by five, only the centre has all the neighbours that a choice needs.
TEST_P(Near, OneOfTwentyFivePixelsIsInside) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    Mosaic<T> m(5, 5, 10);
    for (int y = 0; y < 5; ++y) m.at(3, y) = m.at(4, y) = 200;
    const Rgb<T> rgb = nearest(m, CFA_GRID_RGGB);
    EXPECT_EQ(rgb.at(2, 2)[1], 10);
    EXPECT_EQ(rgb.at(2, 0)[1], (10 + 200 + 2 * 10 + 2) >> 2);
    EXPECT_EQ(rgb.at(2, 4)[1], (10 + 200 + 2 * 10 + 2) >> 2);
    EXPECT_EQ(rgb.at(3, 3)[1], (200 + 200 + 10 + 200 + 2) >> 2);
    EXPECT_EQ(rgb.at(3, 1)[1], (200 + 200 + 10 + 200 + 2) >> 2);
  });
}

TEST_P(Near, NoneOfSixteenPixelsIsInside) {
  Mosaic<uint8_t> m(4, 4, 10);
  for (int y = 0; y < 4; ++y) m.at(3, y) = 200;
  const Rgb<uint8_t> rgb = nearest(m, CFA_GRID_RGGB);
  EXPECT_EQ(rgb.at(2, 2)[1], (10 + 10 + 10 + 200 + 2) >> 2);
}

// A pixel at least two samples inside the frame, from its neighbours alone.
template <class T>
typename Rgb<T>::Pixel insidePixel(const Mosaic<T>& m, int grid, int x, int y) {
  const auto s = [&](int dx, int dy) { return m.at(x + dx, y + dy); };
  const int lying = (s(-1, 0) + s(1, 0) + 1) >> 1, upright = (s(0, -1) + s(0, 1) + 1) >> 1;
  typename Rgb<T>::Pixel pixel;
  const int own = colourAt(grid, x, y);
  pixel[static_cast<size_t>(own)] = s(0, 0);
  if (own == 1) {
    pixel[static_cast<size_t>(colourAt(grid, x + 1, y))] = lying;
    pixel[static_cast<size_t>(colourAt(grid, x, y + 1))] = upright;
    return pixel;
  }
  const int dv = std::abs(s(0, -2) - s(0, 2)), dh = std::abs(s(-2, 0) - s(2, 0));
  const int four = (s(0, -1) + s(-1, 0) + s(1, 0) + s(0, 1) + 2) >> 2;
  pixel[static_cast<size_t>(2 - own)] = (s(-1, -1) + s(1, -1) + s(-1, 1) + s(1, 1) + 2) >> 2;
  pixel[1] = dv < dh ? upright : dv > dh ? lying : four;
  return pixel;
}

// Whole vectors and the rest of a row follow the same formulas.
TEST_P(Near, EveryWidthFollowsTheFormulas) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    for (uint32_t width : kWidths) {
      const int w = static_cast<int>(width) + 4, grid = w & 3;
      // Few values make equal gradients frequent.
      const Mosaic<T> m = noiseMosaic<T>(w, 8, width, width % 2 ? 5 : kLargest<T>);
      const Rgb<T> rgb = nearest(m, grid);
      for (int y = 2; y < 6; ++y)
        for (int x = 2; x < w - 2; ++x)
          ASSERT_EQ(rgb.at(x, y), insidePixel(m, grid, x, y)) << w << ": " << x << ' ' << y;
    }
  });
}

// Wherever a rectangle begins, odd columns and rows included, its pixels are the frame's.
TEST_P(Near, ARectangleIsAPieceOfTheFrame) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(13, 11, 5, 80);
  for (int grid = 0; grid < 4; ++grid) {
    const Rgb<uint8_t> whole = nearest(m, grid);
    for (int y = 0; y < 11; ++y)
      for (int x = 0; x < 13; ++x) {
        const CfaRect roi = {x, y, 1 + (x * 7 + y) % (13 - x), 1 + (x + y * 5) % (11 - y)};
        const Rgb<uint8_t> part = nearest(m, grid, roi);
        EXPECT_TRUE(part.hasOnly(roi));
        for (int j = y; j < y + roi.height; ++j)
          for (int i = x; i < x + roi.width; ++i) EXPECT_EQ(part.at(i, j), whole.at(i, j));
      }
  }
}

}  // namespace
}  // namespace vistrel::core::test
