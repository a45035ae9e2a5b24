// Within two pixels of the frame's edge: plain means, where a missing neighbour is replaced by the
// opposite one. The expected values are written out edge by edge, without mirroring.
#include "tests/cfa/by_name.h"

#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(CfaBorder);

enum class Kind { inside, row, column, corner };

// The neighbours that a pixel has.
template <class T>
struct Surroundings {
  const Mosaic<T>& m;
  int x, y;

  bool hasW() const { return x > 0; }
  bool hasE() const { return x < m.width - 1; }
  bool hasN() const { return y > 0; }
  bool hasS() const { return y < m.height - 1; }
  Kind kind() const {
    const bool lacksColumn = !hasW() || !hasE(), lacksRow = !hasN() || !hasS();
    return lacksColumn && lacksRow ? Kind::corner
           : lacksRow              ? Kind::row
           : lacksColumn           ? Kind::column
                                   : Kind::inside;
  }
  int s(int dx, int dy) const { return m.at(x + dx, y + dy); }
  int inwardX() const { return hasW() ? -1 : 1; }  // toward the neighbour that exists
  int inwardY() const { return hasN() ? -1 : 1; }

  int green() const {  // at a red or blue site
    switch (kind()) {
      case Kind::row: return (s(-1, 0) + s(1, 0) + 2 * s(0, inwardY()) + 2) >> 2;
      case Kind::column: return (s(0, -1) + s(0, 1) + 2 * s(inwardX(), 0) + 2) >> 2;
      case Kind::corner: return (s(inwardX(), 0) + s(0, inwardY()) + 1) >> 1;
      default: return (s(0, -1) + s(-1, 0) + s(1, 0) + s(0, 1) + 2) >> 2;
    }
  }
  int opposite() const {  // the other colour at a red or blue site
    switch (kind()) {
      case Kind::row: return (s(-1, inwardY()) + s(1, inwardY()) + 1) >> 1;
      case Kind::column: return (s(inwardX(), -1) + s(inwardX(), 1) + 1) >> 1;
      case Kind::corner: return s(inwardX(), inwardY());
      default: return (s(-1, -1) + s(1, -1) + s(-1, 1) + s(1, 1) + 2) >> 2;
    }
  }
  int lying() const {  // at a green site, the colour to its left and right
    return hasW() && hasE() ? (s(-1, 0) + s(1, 0) + 1) >> 1 : s(inwardX(), 0);
  }
  int upright() const { return hasN() && hasS() ? (s(0, -1) + s(0, 1) + 1) >> 1 : s(0, inwardY()); }
};

template <class T>
typename Rgb<T>::Pixel borderPixel(const Mosaic<T>& m, int grid, int x, int y) {
  const Surroundings<T> around{m, x, y};
  const int own = colourAt(grid, x, y);
  typename Rgb<T>::Pixel pixel;
  pixel[static_cast<size_t>(own)] = m.at(x, y);
  if (own == 1) {
    pixel[static_cast<size_t>(colourAt(grid, x + 1, y))] = around.lying();
    pixel[static_cast<size_t>(colourAt(grid, x, y + 1))] = around.upright();
  } else {
    pixel[1] = around.green();
    pixel[static_cast<size_t>(2 - own)] = around.opposite();
  }
  return pixel;
}

bool isInside(CfaSize size, int x, int y) {
  return x >= 2 && y >= 2 && x < size.width - 2 && y < size.height - 2;
}

TEST_P(CfaBorder, AFrameOfTwoByTwoIsAllCorners) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    const Mosaic<T> m(2, 2, std::vector<T>{10, 21, 40, 90});  // blue, green, green, red
    const Rgb<T> rgb = nearest(m, CFA_GRID_BGGR);
    EXPECT_THAT(rgb.at(0, 0), ElementsAre(90, (21 + 40 + 1) >> 1, 10));
    EXPECT_THAT(rgb.at(1, 0), ElementsAre(90, 21, 10));
    EXPECT_THAT(rgb.at(0, 1), ElementsAre(90, 40, 10));
    EXPECT_THAT(rgb.at(1, 1), ElementsAre(90, (21 + 40 + 1) >> 1, 10));
    EXPECT_TRUE(rgb.hasOnly({0, 0, 2, 2}));
  });
}

template <class T>
void expectBorder(const Mosaic<T>& m, int grid) {
  const Rgb<T> rgb = nearest(m, grid);
  for (int y = 0; y < m.height; ++y)
    for (int x = 0; x < m.width; ++x) {
      if (isInside(m.size(), x, y)) continue;
      ASSERT_EQ(rgb.at(x, y), borderPixel(m, grid, x, y))
          << m.width << 'x' << m.height << ", grid " << grid << ": " << x << ' ' << y;
    }
}

// Odd and even sides: the right and lower corners change their site. With three rows or columns,
// one of them is the second from both edges.
TEST_P(CfaBorder, EveryEdgeFollowsItsFormulas) {
  atBothDepths([](auto depth) {
    for (int w = 2; w <= 9; ++w)
      for (int h = 2; h <= 9; ++h)
        for (int grid = 0; grid < 4; ++grid)
          expectBorder(noiseMosaic<decltype(depth)>(w, h, static_cast<unsigned>(16 * w + h)), grid);
  });
}

// Two samples away, the rows show no difference, and the columns a large one.
TEST_P(CfaBorder, GreenNeverFollowsAnEdge) {
  Mosaic<uint8_t> m(12, 9, 10);
  for (int y = 0; y < 9; ++y)
    for (int x = 5; x < 12; ++x) m.at(x, y) = 200;
  const Rgb<uint8_t> rgb = nearest(m, CFA_GRID_BGGR);
  EXPECT_EQ(rgb.at(5, 1)[1], (10 + 3 * 200 + 2) >> 2);
  EXPECT_EQ(rgb.at(5, 7)[1], (10 + 3 * 200 + 2) >> 2);
  EXPECT_EQ(rgb.at(5, 5)[1], 200);
}

template <class T>
Rgb<T> borderOf(const Mosaic<T>& m, int grid, CfaRect roi) {
  Rgb<T> rgb(roi);
  ownBayerBorder(CfaFrame<T>{m.samples.data(), m.width, m.size(), core::Mosaic::ofGrid(grid)}, roi,
                 rgb.data(), ptrdiff_t{rgb.step()});
  return rgb;
}

TEST(CfaBorderAlone, WritesTheRingOfTwoPixelsAndNothingElse) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(9, 8, 6, 80);
  const Rgb<uint8_t> rgb = borderOf(m, 1, m.all());
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 9; ++x) {
      if (isInside(m.size(), x, y))
        EXPECT_THAT(rgb.at(x, y), ElementsAre(0x55, 0x55, 0x55));
      else
        EXPECT_EQ(rgb.at(x, y), borderPixel(m, 1, x, y));
    }
}

TEST(CfaBorderAlone, ARectangleFromOneOneHasTheSecondRowAndColumn) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(12, 12, 7, 80);
  const Rgb<uint8_t> rgb = borderOf(m, 0, {1, 1, 6, 6});
  for (int y = 1; y < 7; ++y)
    for (int x = 1; x < 7; ++x) {
      if (x == 1 || y == 1)
        EXPECT_EQ(rgb.at(x, y), borderPixel(m, 0, x, y));
      else
        EXPECT_THAT(rgb.at(x, y), ElementsAre(0x55, 0x55, 0x55));
    }
}

TEST(CfaBorderAlone, ARectangleShortOfTheLastColumnHasTheSecondLast) {
  const Mosaic<uint16_t> m = noiseMosaic<uint16_t>(12, 12, 8, 9000);
  const Rgb<uint16_t> rgb = borderOf(m, 3, {4, 4, 7, 3});
  EXPECT_TRUE(rgb.hasOnly({10, 4, 1, 3}));
  for (int y = 4; y < 7; ++y) EXPECT_EQ(rgb.at(10, y), borderPixel(m, 3, 10, y));
}

TEST(CfaBorderAlone, HasNothingToDoInside) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(12, 12, 9);
  EXPECT_TRUE(borderOf(m, 0, {2, 2, 8, 8}).isUntouched());
}

// A strip that gets only the lines that it reads gives what the whole frame has there.
template <class T>
struct Strips {
  Mosaic<T> m = noiseMosaic<T>(11, 9, 10, 80);
  static constexpr int kGrid = CFA_GRID_GBRG;
  CfaFrame<T> frame{m.samples.data(), m.width, m.size(), core::Mosaic::ofGrid(kGrid)};
  CfaRect roi{3, 2, 5, 4};
  Rgb<T> rgb{m.all()};
  ptrdiff_t step = rgb.step();

  void expect(CfaRect strip) const {
    EXPECT_TRUE(rgb.hasOnly(strip));
    for (int y = strip.y; y < strip.y + strip.height; ++y)
      for (int x = strip.x; x < strip.x + strip.width; ++x)
        EXPECT_EQ(rgb.at(x, y), borderPixel(m, kGrid, x, y));
  }
  T* at(int x, int y) { return rgb.data() + y * step + 3 * x; }
};

TEST(CfaStrips, HorizontalOnesSeeThreeOrTwoRows) {
  Strips<uint8_t> upper, second, secondLast, last;
  ownBayerBrdHrz2U_8u(upper.frame.part(0, 0, {11, 2}), upper.roi, upper.at(3, 0));
  upper.expect({3, 0, 5, 1});
  ownBayerBrdHrz3_8u(second.frame.part(0, 0, {11, 3}), second.roi, second.at(3, 1));
  second.expect({3, 1, 5, 1});
  ownBayerBrdHrz3_8u(secondLast.frame.part(0, 6, {11, 3}), second.roi, secondLast.at(3, 7));
  secondLast.expect({3, 7, 5, 1});
  ownBayerBrdHrz2D_8u(last.frame.part(0, 7, {11, 2}), last.roi, last.at(3, 8));
  last.expect({3, 8, 5, 1});
}

TEST(CfaStrips, VerticalOnesSeeThreeOrTwoColumns) {
  Strips<uint16_t> left, second, secondLast, right;
  ownBayerBrdVrt2L_16u(left.frame.part(0, 0, {2, 9}), left.roi, left.at(0, 2), left.step);
  left.expect({0, 2, 1, 4});
  ownBayerBrdVrt3_16u(second.frame.part(0, 0, {3, 9}), second.roi, second.at(1, 2), second.step);
  second.expect({1, 2, 1, 4});
  ownBayerBrdVrt3_16u(secondLast.frame.part(8, 0, {3, 9}), secondLast.roi, secondLast.at(9, 2),
                      secondLast.step);
  secondLast.expect({9, 2, 1, 4});
  ownBayerBrdVrt2R_16u(right.frame.part(9, 0, {2, 9}), right.roi, right.at(10, 2), right.step);
  right.expect({10, 2, 1, 4});
}

}  // namespace
}  // namespace vistrel::core::test
