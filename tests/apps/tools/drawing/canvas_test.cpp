#include "apps/tools/drawing/canvas.h"

#include <gtest/gtest.h>

#include <array>

namespace vistrel {
namespace {

constexpr app::Paint kBlack{0, 0, 0}, kInk{10, 20, 30};

std::array<int, 3> at(const app::Canvas& canvas, size_t x, size_t y) {
  const Image& image = canvas.image();
  const uint8_t* p = &image.pixels[y * image.layout.row_bytes + 3 * x];
  return {p[0], p[1], p[2]};
}

constexpr std::array<int, 3> kDark{0, 0, 0}, kRgb{10, 20, 30};

TEST(Canvas, BoxesAreClipped) {
  app::Canvas canvas(4, 3, kBlack);
  canvas.box(2, -5, 100, 7, kInk);
  for (size_t y = 0; y < 3; ++y)
    for (size_t x = 0; x < 4; ++x) EXPECT_EQ(at(canvas, x, y), x >= 2 && y < 2 ? kRgb : kDark);
}

// The rim of a disc of radius 2 about (4, 4): the centre of pixel (5, 2) is at a distance of
// sqrt(1.5^2 + 1.5^2) = 2.12, so a share of 2.5 - 2.12 = 0.38 is covered.
TEST(Canvas, DiscsHaveASoftRim) {
  app::Canvas canvas(8, 8, kBlack);
  canvas.disc(4, 4, 2, {100, 0, 0});
  EXPECT_EQ(at(canvas, 4, 4)[0], 100);
  EXPECT_EQ(at(canvas, 5, 2)[0], 38);
  EXPECT_EQ(at(canvas, 2, 5)[0], 38);
  EXPECT_EQ(at(canvas, 7, 4), kDark);
}

TEST(Canvas, TextIsMadeOfDots) {
  EXPECT_EQ(app::Canvas::textWidth(2, "ab"), 22);  // two glyphs of 5 dots and a gap
  EXPECT_EQ(app::Canvas::textWidth(2, ""), 0);
  EXPECT_EQ(app::Canvas::textHeight(2), 14);
  app::Canvas canvas(20, 10, kBlack);
  canvas.text(1, 1, 1, "L", kInk);
  EXPECT_EQ(at(canvas, 1, 1), kRgb);
  EXPECT_EQ(at(canvas, 5, 7), kRgb);
  EXPECT_EQ(at(canvas, 2, 1), kDark);
}

TEST(Canvas, MagnifiedPixelsAreSquares) {
  Image gray;
  gray.layout = {3, 2, 1, 8, 3, 6, 0, 0, {}};
  for (uint8_t v = 1; v <= 6; ++v) gray.pixels.push_back(v);
  app::Canvas canvas(7, 5, kBlack);
  canvas.magnified(1, 1, 2, gray, {1, 0, 2, 2});
  const int expected[5][7] = {{0, 0, 0, 0, 0, 0, 0},
                              {0, 2, 2, 3, 3, 0, 0},
                              {0, 2, 2, 3, 3, 0, 0},
                              {0, 5, 5, 6, 6, 0, 0},
                              {0, 5, 5, 6, 6, 0, 0}};
  for (size_t y = 0; y < 5; ++y)
    for (size_t x = 0; x < 7; ++x) EXPECT_EQ(at(canvas, x, y)[2], expected[y][x]) << x << ", " << y;
}

}  // namespace
}  // namespace vistrel
