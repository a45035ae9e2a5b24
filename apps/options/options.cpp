#include "apps/options/options.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

#include <charconv>

namespace vistrel::app {

CLI::Option* between(CLI::Option* option, int min, int max) {
  const auto range = std::to_string(min) + ".." + std::to_string(max);
  return option->check(CLI::Range(min, max).description(""))->type_name(range);
}

CLI::Option* fromZero(CLI::Option* option) {
  const auto fault = [](const std::string& text) -> std::string {
    uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc{} && rest == end) return {};
    return fmt::format("Value {} is not a whole number from 0", text);
  };
  return option->check(CLI::Validator(fault, ""));
}

CLI::Option* oneOf(CLI::Option* option, const std::vector<std::string>& words) {
  return option->check(CLI::IsMember(words).description(""))
      ->type_name(CLI::detail::join(words, "|"));
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
