// Compares names, and suggests one for another that is misspelt.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

// Whether the names are the same, case ignored.
bool isSameName(std::string_view one, std::string_view other);

// The first of the names that the fewest edits of single characters lead to, case ignored. Empty if
// it takes more than one edit for every four characters.
std::string nearestName(std::string_view text, const std::vector<std::string>& names);

}  // namespace vistrel::app
