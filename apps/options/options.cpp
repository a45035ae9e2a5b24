#include "apps/options/options.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

#include "apps/error.h"
#include "apps/names/nearest_name.h"

namespace vistrel::app {

namespace {

[[noreturn]] void throwFault(const CLI::Option& option, const std::string& text,
                             const std::string& wanted) {
  throwError(kUsage, "{} {}: {}", option.get_name(), quoted(text), wanted);
}

// CLI11 would read numbers that begin with 0 as octal.
CLI::Option* aNumber(CLI::Option* option, uint64_t min, uint64_t max, const std::string& wanted) {
  const auto toDecimal = [=](std::string& text) -> std::string {
    uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || rest != end || number < min || number > max)
      throwFault(*option, text, wanted);
    text = std::to_string(number);
    return {};
  };
  return option->transform(CLI::Validator(toDecimal, ""));
}

}  // namespace

CLI::Option* between(CLI::Option* option, uint32_t min, uint32_t max) {
  return aNumber(option, min, max,
                 fmt::format("a whole number from {} to {} is expected", min, max))
      ->type_name(fmt::format("{}..{}", min, max));
}

CLI::Option* fromZero(CLI::Option* option) {
  return aNumber(option, 0, std::numeric_limits<uint64_t>::max(),
                 "a whole number from 0 is expected");
}

CLI::Option* oneOf(CLI::Option* option, const std::vector<std::string>& words) {
  const auto check = [=](std::string& text) -> std::string {
    if (!std::ranges::count(words, text))
      throwFault(*option, text,
                 fmt::format("{} {} allowed{}", fmt::join(words, ", "),
                             words.size() > 1 ? "are" : "is", nearestText(text, words)));
    return {};
  };
  return option->check(CLI::Validator(check, ""))->type_name(CLI::detail::join(words, "|"));
}

CLI::Option* aFile(CLI::Option* option) {
  const auto check = [=](std::string& text) -> std::string {
    if (text.empty()) throwFault(*option, text, "the name of a file is expected");
    return {};
  };
  return option->check(CLI::Validator(check, ""));
}

std::string quoted(const std::string& word) {
  const auto isPlain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("_-./:=,+@%").find(c) != std::string_view::npos;
  };
  if (!word.empty() && std::ranges::all_of(word, isPlain)) return word;
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

}  // namespace vistrel::app
