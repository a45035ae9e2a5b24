#include "apps/look/look.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "apps/error.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

constexpr double kThousand = 1000;

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> items;
  for (;;) {
    const size_t end = text.find(separator);
    items.push_back(text.substr(0, end));
    if (end == text.npos) return items;
    text.remove_prefix(end + 1);
  }
}

// A decimal number in units of 1/one, rounded, from `least` to `most` of them.
template <class T>
bool parseNumber(std::string_view text, double one, double least, double most, T& number) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
  const double scaled = std::round(value * one);
  if (error != std::errc{} || rest != end || !(scaled >= least && scaled <= most)) return false;
  number = static_cast<T>(scaled);
  return true;
}

bool parseInteger(std::string_view text, uint32_t least, uint32_t most, uint32_t& number) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc{} && rest == end && number >= least && number <= most;
}

// As many numbers as `numbers` has, separated by colons.
template <class T, size_t n, class Parse>
bool parseList(std::string_view text, std::optional<std::array<T, n>>& numbers, Parse parse) {
  const auto items = split(text, ':');
  numbers.emplace();
  return items.size() == n && std::equal(items.begin(), items.end(), numbers->begin(),
                                         [&](auto item, T& number) { return parse(item, number); });
}

template <class T, size_t n>
std::string decimalsOf(const std::array<T, n>& numbers) {
  std::array<double, n> values;
  std::transform(numbers.begin(), numbers.end(), values.begin(),
                 [](T number) { return static_cast<double>(number) / kLookOne; });
  return fmt::format("{:.4f}", fmt::join(values, ":"));
}

// Of a curve's parameter, in thousandths; 0 without one.
struct Range {
  uint32_t least = 0, most = 0;
};
Range parametersOf(Curve curve) {
  if (curve == Curve::kGamma) return {100, 10'000};
  return curve == Curve::kAsinh ? Range{1, 1'000'000'000} : Range{};
}

bool parseBlack(KnownLook& look, std::string_view text) {
  const auto parse = [](std::string_view item, uint32_t& level) {
    return parseInteger(item, 0, kMaxLevel, level);
  };
  uint32_t level = 0;
  if (!parse(text, level)) return parseList(text, look.black, parse);
  look.black.emplace().fill(level);
  return true;
}

bool parseWhite(KnownLook& look, std::string_view text) {
  return parseInteger(text, 1, kMaxLevel, look.white.emplace());
}

bool parseGains(KnownLook& look, std::string_view text) {
  return parseList(text, look.gains, [](std::string_view item, uint32_t& gain) {
    return parseNumber(item, kLookOne, 1, kMaxLookGain, gain);
  });
}

bool parseMatrix(KnownLook& look, std::string_view text) {
  const bool isList = parseList(text, look.matrix, [](std::string_view item, int32_t& coefficient) {
    return parseNumber(item, kLookOne, -kMaxMatrixRow, kMaxMatrixRow, coefficient);
  });
  for (size_t row = 0; isList && row < 9; row += 3) {
    int32_t size = 0;
    for (size_t i = row; i < row + 3; ++i) size += std::abs((*look.matrix)[i]);
    if (size > kMaxMatrixRow) return false;
  }
  return isList;
}

bool parseExposure(KnownLook& look, std::string_view text) {
  return parseNumber(text, kLookOne, 1, kMaxExposure, look.exposure.emplace());
}

bool parseCurve(KnownLook& look, std::string_view text) {
  const size_t colon = text.find(':');
  const auto curve = tryParseTransfer(std::string(text.substr(0, colon)).c_str());
  if (!curve) return false;
  Transfer& transfer = look.transfer.emplace();
  transfer.curve = static_cast<Curve>(*curve);
  const auto [least, most] = parametersOf(transfer.curve);
  if (!most) return colon == text.npos;
  return colon != text.npos &&
         parseNumber(text.substr(colon + 1), kThousand, least, most, transfer.parameter);
}

bool parseHighlights(KnownLook& look, std::string_view text) {
  look.neutralHighlights = text == "neutral";
  return *look.neutralHighlights || text == "clip";
}

struct Part {
  std::string_view name, allowed;
  bool (*parse)(KnownLook& look, std::string_view value);
};
constexpr Part kParts[] = {
    {"black", "a level from 0 to 65535, or four for the places of the 2x2 block, as in 64:64:66:64",
     parseBlack},
    {"white", "a level from 1 to 65535", parseWhite},
    {"gains", "red, green and blue from 1/4096 to 16, as in 1.8734:1:1.5521", parseGains},
    {"matrix",
     "nine numbers, row by row, whose sizes add up to at most 7.9997 in a row, as in "
     "1:0:0:0:1:0:0:0:1",
     parseMatrix},
    {"exposure", "a factor from 1/4096 to 1024, as in 1.25", parseExposure},
    {"curve",
     "linear, srgb, gamma:G with G from 0.1 to 10, or asinh:N with N from 0.001 to 1000000",
     parseCurve},
    {"highlights", "neutral or clip", parseHighlights}};

struct ModeName {
  LookMode mode;
  std::string_view name;
};
constexpr ModeName kModes[] = {{LookMode::kAuto, "auto"},
                               {LookMode::kLinear, "linear"},
                               {LookMode::kSrgb, "srgb"},
                               {LookMode::kAstro, "astro"}};

std::string partNames() {
  std::string names;
  for (const Part& part : kParts)
    names += fmt::format("{}{}", names.empty() ? "" : ", ", part.name);
  return names;
}

// `text` is the whole, of which the item is a part.
const Part& parsePart(std::string_view text, std::string_view item, KnownLook& known) {
  const size_t equals = item.find('=');
  if (item.empty())
    throwError(kUsage,
               "--look {}: a part is empty; auto, linear, srgb, astro or NAME=VALUE is "
               "expected",
               text);
  if (std::ranges::count(kModes, item, &ModeName::name))
    throwError(kUsage, "--look {}: only the first part can be a mode, such as {}", text, item);
  if (equals == item.npos)
    throwError(kUsage, "--look {}: NAME=VALUE is expected, or first auto, linear, srgb or astro",
               item);
  const auto part = std::ranges::find(kParts, item.substr(0, equals), &Part::name);
  if (part == std::end(kParts))
    throwError(kUsage, "--look {}: the names are {}", item, partNames());
  if (!part->parse(known, item.substr(equals + 1)))
    throwError(kUsage, "--look {}: {} is {}", item, part->name, part->allowed);
  return *part;
}

void checkOrder(const KnownLook& known) {
  if (!known.black || !known.white) return;
  const uint32_t black = *std::ranges::max_element(*known.black);
  if (black >= *known.white)
    throwError(kUsage, "--look: white={} is not above black={}", *known.white, black);
}

}  // namespace

std::string transferText(const Transfer& transfer) {
  const char* const name = transferName(static_cast<uint32_t>(transfer.curve));
  if (!parametersOf(transfer.curve).most) return name;
  return fmt::format("{}:{:.3f}", name, transfer.parameter / kThousand);
}

LookChoice parseLook(std::string_view asTyped) {
  std::string text(asTyped);
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
  LookChoice choice;
  auto items = split(text, ',');
  const auto mode = std::ranges::find(kModes, items.front(), &ModeName::name);
  if (mode != std::end(kModes)) {
    choice.mode = mode->mode;
    items.erase(items.begin());
  }
  std::vector<const Part*> seen;
  for (const std::string_view item : items) {
    const Part& part = parsePart(text, item, choice.known);
    if (std::ranges::count(seen, &part))
      throwError(kUsage, "--look {}: {} is there twice", text, part.name);
    seen.push_back(&part);
  }
  checkOrder(choice.known);
  return choice;
}

std::string lookText(const Look& look, bool isMono) {
  const std::string levels =
      fmt::format("black={},white={}", fmt::join(look.black, ":"), look.white);
  const std::string tone =
      fmt::format("exposure={:.4f},curve={}", static_cast<double>(look.exposure) / kLookOne,
                  transferText(look.transfer));
  if (isMono) return levels + "," + tone;
  return fmt::format("{},gains={},matrix={},{},highlights={}", levels, decimalsOf(look.gains),
                     decimalsOf(look.matrix), tone, look.neutralHighlights ? "neutral" : "clip");
}

}  // namespace vistrel::app
