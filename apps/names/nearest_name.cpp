#include "apps/names/nearest_name.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace vistrel::app {
namespace {

bool isSameLetter(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// Levenshtein's distance. distances[i]: from the first i characters of `a` to those of `b` so far.
size_t distanceOf(std::string_view a, std::string_view b) {
  std::vector<size_t> distances(a.size() + 1);
  std::iota(distances.begin(), distances.end(), size_t{0});
  for (const char letter : b) {
    size_t diagonal = distances[0]++;
    for (size_t i = 1; i <= a.size(); ++i) {
      const size_t replaced = diagonal + !isSameLetter(a[i - 1], letter);
      diagonal = distances[i];
      distances[i] = std::min({replaced, distances[i] + 1, distances[i - 1] + 1});
    }
  }
  return distances.back();
}

}  // namespace

bool isSameName(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, isSameLetter);
}

std::string nearestName(std::string_view text, const std::vector<std::string>& names) {
  constexpr size_t kShortest = 2;
  if (text.size() < kShortest) return "";
  std::string nearest;
  size_t least = std::max<size_t>(text.size() / 4, 1) + 1;
  for (const std::string& name : names) {
    const size_t distance = distanceOf(text, name);
    if (distance >= least) continue;
    least = distance;
    nearest = name;
  }
  const auto isAbbreviated = [text](const std::string& name) {
    return isSameName(text, std::string_view(name).substr(0, text.size()));
  };
  const auto whole = std::ranges::find_if(names, isAbbreviated);
  return nearest.empty() && whole != names.end() ? *whole : nearest;
}

}  // namespace vistrel::app
