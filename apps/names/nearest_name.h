// Suggests a name for one that is misspelt.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

// The first of the names that the fewest edits of single characters lead to, case ignored. Empty if
// it takes more than one edit for every four characters.
std::string nearestName(std::string_view text, const std::vector<std::string>& names);

}  // namespace vistrel::app
