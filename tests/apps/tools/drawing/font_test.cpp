#include "apps/tools/drawing/font.h"

#include <gtest/gtest.h>

#include <string>

namespace vistrel {
namespace {

std::string drawn(const std::string& line) {
  std::string dots;
  for (int y = 0; y < app::kGlyphHeight; ++y) {
    for (int x = 0; x < app::kGlyphAdvance * static_cast<int>(line.size()); ++x)
      dots += app::isInk(line, x, y) ? '#' : '.';
    dots += '\n';
  }
  return dots;
}

TEST(Font, GlyphsStandSideBySide) {
  EXPECT_EQ(drawn("LT"),
            "#.....#####.\n"
            "#.......#...\n"
            "#.......#...\n"
            "#.......#...\n"
            "#.......#...\n"
            "#.......#...\n"
            "#####...#...\n");
}

TEST(Font, TellsLowerCaseFromCapitals) {
  EXPECT_EQ(drawn("aq"),
            "............\n"
            "............\n"
            ".###...##.#.\n"
            "....#.#..##.\n"
            ".####..####.\n"
            "#...#.....#.\n"
            ".####.....#.\n");
}

TEST(Font, HasAPercentSign) {
  EXPECT_EQ(drawn("%"),
            "##....\n"
            "##..#.\n"
            "...#..\n"
            "..#...\n"
            ".#....\n"
            "#..##.\n"
            "...##.\n");
}

TEST(Font, ASpaceHasNoInk) { EXPECT_EQ(drawn(" ").find('#'), std::string::npos); }

}  // namespace
}  // namespace vistrel
