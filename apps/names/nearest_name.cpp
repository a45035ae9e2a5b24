#include "apps/names/nearest_name.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace vistrel::app {
namespace {

bool isSameLetter(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// Levenshtein's distance, in which an exchange of neighbours counts 1 too. row[i]: from the first i
// characters of `a` to those of `b` so far; above, aboveThat: to one and to two fewer.
size_t distanceOf(std::string_view a, std::string_view b) {
  std::vector<size_t> row(a.size() + 1), above(row), aboveThat;
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t j = 1; j <= b.size(); ++j) {
    aboveThat = std::exchange(above, row);
    row[0] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
      row[i] = std::min(
          {above[i - 1] + !isSameLetter(a[i - 1], b[j - 1]), above[i] + 1, row[i - 1] + 1});
      if (i > 1 && j > 1 && isSameLetter(a[i - 1], b[j - 2]) && isSameLetter(a[i - 2], b[j - 1]))
        row[i] = std::min(row[i], aboveThat[i - 2] + 1);
    }
  }
  return row.back();
}

}  // namespace

bool isSameName(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, isSameLetter);
}

std::string nearestName(std::string_view text, const std::vector<std::string>& names) {
  constexpr size_t kShortest = 2;
  const bool isNumber = text.find_first_not_of("0123456789") == text.npos;
  if (text.size() < kShortest || isNumber) return "";
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

std::string nearestText(std::string_view text, const std::vector<std::string>& names) {
  const std::string nearest = nearestName(text, names);
  return nearest.empty() ? "" : "; the nearest is " + nearest;
}

}  // namespace vistrel::app
