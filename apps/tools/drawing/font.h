// A small font of 5 x 7 dots: letters, digits and some punctuation.
#pragma once

#include <string_view>

namespace vistrel::app {

constexpr int kGlyphWidth = 5, kGlyphHeight = 7;
constexpr int kGlyphAdvance = 6, kLineAdvance = 10;

// Whether dot (x, y) of a line of text is ink; (0, 0) is the top left corner.
bool isInk(std::string_view line, int x, int y);

}  // namespace vistrel::app
