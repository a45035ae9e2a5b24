#include "apps/options/preparation_options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>

#include "apps/error.h"
#include "apps/options/geometry.h"
#include "apps/options/options.h"

namespace vistrel::app {
namespace {

constexpr int kMaxBlack = 65535;
constexpr double kGainOne = double{int{VISTREL_GAIN_ONE}}, kGainMax = double{int{VISTREL_GAIN_MAX}};

[[noreturn]] void throwBalanceError(const std::string& text) {
  throwError(kUsage, "--wb {}: auto, or three gains R,G,B from 1/4096 to 16, as in 2.1,1,1.6",
             text);
}

// In 1/4096, rounded.
std::array<uint32_t, 3> parseGains(const std::string& text) {
  std::array<uint32_t, 3> gains;
  const char* at = text.data();
  const char* const end = at + text.size();
  for (size_t i = 0; i < gains.size(); ++i) {
    double gain = 0;
    if (i && (at == end || *at++ != ',')) throwBalanceError(text);
    const auto [rest, error] = std::from_chars(at, end, gain, std::chars_format::fixed);
    const double scaled = gain * kGainOne;
    if (error != std::errc{} || !(scaled >= 1 && scaled <= kGainMax)) throwBalanceError(text);
    gains[i] = static_cast<uint32_t>(std::lround(scaled));
    at = rest;
  }
  if (at != end) throwBalanceError(text);
  return gains;
}

std::array<uint32_t, 4> parseBlack(const std::string& text) {
  std::array<uint32_t, 4> levels{};
  const char* at = text.data();
  const char* const end = at + text.size();
  size_t n = 0;
  for (; n < levels.size(); ++n) {
    const auto [rest, error] = std::from_chars(at, end, levels[n]);
    if (error != std::errc{} || levels[n] > kMaxBlack) break;
    at = rest;
    if (at == end || *at != ':') break;
    ++at;
  }
  if (at != end || text.empty() || text.back() == ':' || (n != 0 && n != 3))
    throwError(kUsage, "--black {}: one level, or four as in 64:64:66:64, from 0 to {}", text,
               kMaxBlack);
  if (n == 0) levels.fill(levels[0]);
  return levels;
}

}  // namespace

void PreparationOptions::apply(vistrel_conversion& c) const {
  if (black) std::copy(black->begin(), black->end(), c.black);
  c.white = white;
  c.edges = edges == "padded" ? VISTREL_EDGES_PADDED : VISTREL_EDGES_NATIVE;
  if (grayWorld) c.white_balance = VISTREL_BALANCE_GRAY_WORLD;
  if (!gains) return;
  c.white_balance = VISTREL_BALANCE_GAINS;
  std::copy(gains->begin(), gains->end(), c.gains);
}

OptionNames PreparationOptions::optionNames() const {
  return {{"conversion.white_balance", "--wb", balance}, {"conversion.edges", "--edges", edges}};
}

void addPreparationOptions(CLI::App& command, PreparationOptions& o) {
  command
      .add_option_function<std::string>(
          "--black", [&o](const std::string& text) { o.black = parseBlack(text); },
          "Black level (0), or four as in 64:64:66:64")
      ->type_name("N");
  between(command.add_option("--white", o.white, "Level where samples clip: --wb auto skips them"),
          1, kMaxBlack);
  command
      .add_option_function<std::string>(
          "--wb",
          [&o](const std::string& text) {
            o.balance = text;
            const std::string kAuto = "auto:";
            o.grayWorld = text == "auto" || text.starts_with(kAuto);
            o.balanceRegion.reset();
            if (text.starts_with(kAuto))
              o.balanceRegion = parseRegion("--wb auto:", text.substr(kAuto.size()));
            if (!o.grayWorld) o.gains = parseGains(text);
          },
          "Gains; auto: equal means, auto:WxH+X+Y: there")
      ->type_name("R,G,B|auto");
  oneOf(command.add_option("--edges", o.edges, "Borders: native, or mirrored (native)"),
        {"native", "padded"});
}

}  // namespace vistrel::app
