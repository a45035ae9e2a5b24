#include "apps/options/frame_name.h"

#include <charconv>
#include <optional>
#include <string>

#include "apps/error.h"
#include "apps/names/nearest_name.h"
#include "apps/names/phase_names.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

std::optional<uint32_t> findPhase(std::string_view text) {
  uint32_t phase = 0;
  const bool known = vistrel_parse_phase(std::string(text).c_str(), &phase, nullptr) == VISTREL_OK;
  return known && phase <= VISTREL_MONO ? std::optional(phase) : std::nullopt;
}

std::string_view lastWord(std::string_view stem) { return stem.substr(stem.rfind('_') + 1); }

}  // namespace

std::optional<FrameName> findFrameName(std::string_view stem) {
  FrameName name{0, findPhase(lastWord(stem))};
  if (name.phase) stem = stem.substr(0, stem.rfind('_'));
  const std::string_view word = lastWord(stem);
  const char* const wordEnd = word.data() + word.size();
  const auto [digitsEnd, error] = std::from_chars(word.data(), wordEnd, name.bits);
  const auto digits = static_cast<size_t>(digitsEnd - word.data());
  if (word == stem || error != std::errc{} || word.substr(digits) != "b") return {};
  return name;
}

uint32_t parsePhase(std::string_view option, std::string_view text) {
  if (const auto phase = findPhase(text)) return *phase;
  for (uint32_t phase = VISTREL_GRBG; phase <= VISTREL_GBRG; ++phase)
    if (text == fmt::format("blue={},{}", phaseNames(phase).blue[0], phaseNames(phase).blue[1]))
      return phase;
  throwError(kUsage,
             "{} {}: rggb, bggr, grbg, gbrg and mono are allowed, and blue=0,0 to blue=1,1, "
             "the row and column of the blue site{}",
             option, text, nearestText(text, {"rggb", "bggr", "grbg", "gbrg", "mono"}));
}

}  // namespace vistrel::app
