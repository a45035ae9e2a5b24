#include "apps/frame_name.h"

#include <optional>
#include <regex>
#include <string>

#include "apps/failure.h"
#include "host/vistrelhost.h"

namespace vistrel::app {
namespace {

std::optional<uint32_t> findPhase(std::string_view text) {
  for (uint32_t phase = 0; const char* name = vistrel_phase_name(phase); ++phase)
    if (text == name) return phase;
  return {};
}

}  // namespace

FrameName parseFrameName(std::string_view stem) {
  static const std::regex pattern(R"(.*_(\d{1,2})b(?:_([a-z]{4}))?)");
  std::match_results<std::string_view::const_iterator> match;
  if (std::regex_match(stem.begin(), stem.end(), match, pattern)) {
    const auto phase = match[2].matched ? findPhase(match[2].str()) : VISTREL_MONO;
    if (phase) return {static_cast<uint32_t>(std::stoul(match[1].str())), *phase};
  }
  fail(kRejected, "--from-name: the name does not end in _<bits>b_<phase> or _<bits>b, as in {}",
       "rose_12b_rggb.pgm");
}

uint32_t parsePhase(std::string_view option, std::string_view text) {
  if (const auto phase = findPhase(text)) return *phase;
  fail(kUsage, "{} {}: rggb, bggr, grbg, gbrg and mono are allowed", option, text);
}

}  // namespace vistrel::app
