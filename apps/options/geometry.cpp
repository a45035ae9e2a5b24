#include "apps/options/geometry.h"

#include <charconv>

#include "apps/error.h"

namespace vistrel::app {
namespace {

// Parses all of `text`: numbers with separators[i] between number i and the next.
bool parseNumbers(std::string_view text, std::string_view separators, uint32_t* numbers) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (size_t i = 0; i <= separators.size(); ++i) {
    if (i && (at == end || *at++ != separators[i - 1])) return false;
    const auto [next, error] = std::from_chars(at, end, numbers[i]);
    if (error != std::errc{}) return false;
    at = next;
  }
  return at == end;
}

}  // namespace

Size parseSize(std::string_view option, std::string_view text) {
  uint32_t n[2];
  if (!parseNumbers(text, "x", n) || !n[0] || !n[1])
    throwError(kUsage, "{} {}: WxH is expected, both at least 1, such as 640x480", option, text);
  return {n[0], n[1]};
}

vistrel_region parseRegion(std::string_view option, std::string_view text) {
  uint32_t n[4];
  const char* const between = option.ends_with(':') ? "" : " ";
  if (!parseNumbers(text, "x++", n))
    throwError(kUsage, "{}{}{}: WxH+X+Y is expected, such as 640x480+16+8", option, between, text);
  if (!n[0] && !n[1]) throwError(kUsage, "{}{}{}: it is empty", option, between, text);
  return {n[2], n[3], n[0], n[1]};
}

std::string regionText(const vistrel_region& r) {
  return fmt::format("{}x{}+{}+{}", r.width, r.height, r.x, r.y);
}

}  // namespace vistrel::app
