// Compares names, and suggests one for another that is misspelt.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

// Whether the names are the same, case ignored.
bool isSameName(std::string_view one, std::string_view other);

// The first of the names that the fewest edits of single characters, or exchanges of neighbours,
// lead to, case ignored: one, or one for every four characters. If there is none, the first name
// that begins with the text. Empty if there is neither, and for a number or a single character.
std::string nearestName(std::string_view text, const std::vector<std::string>& names);

// "; the nearest is convert", for the end of a rejection; empty if there is no such name.
std::string nearestText(std::string_view text, const std::vector<std::string>& names);

}  // namespace vistrel::app
