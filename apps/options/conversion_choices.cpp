// What the options of a conversion say to each other, to a frame and to the user.
#include "apps/options/conversion_options.h"

namespace vistrel::app {
namespace {

void append(Wording& words, const Wording& more) {
  words.insert(words.end(), more.begin(), more.end());
}

}  // namespace

std::string ToneOptions::typed() const {
  if (!curve.empty()) return "--curve " + curve;
  return window ? fmt::format("--window {}", *window) : "";
}

Wording ToneOptions::words() const {
  if (curve.empty())
    return {{"conversion.reduction", "--window", fmt::format("{}", window.value_or(0))}};
  return {
      {"conversion.reduction", "--curve", curve},
      {"conversion.table_entries", "--curve", fmt::format("{}: {} entries", curve, table.size())}};
}

std::vector<std::string> ConversionOptions::contradictions() const {
  std::vector<std::string> found;
  const auto clash = [&found](const std::string& one, const std::string& other, const char* why) {
    found.push_back(fmt::format("{} and {} do not go together: {}", one, other, why));
  };
  const bool allBits = keepsAllBits();
  if (depth == "16" && !allBits)
    clash("--depth 16", "--format " + format, "it has 8 bits; bgr48 and gray16 keep all");
  if (depth == "8" && allBits)
    clash("--depth 8", "--format " + format, "it keeps all bits; bgr24 and gray8 have 8");
  if (allBits && !tone.typed().empty())
    clash(tone.typed(), format.empty() ? "--depth 16" : "--format " + format, "all bits are kept");
  if (!gray.empty() && format != "gray8" && format != "gray16")
    clash("--gray " + gray, "--format " + format, "it is for gray8 and gray16");
  if (gray == "raw" && preparation.edges == "padded")
    clash("--gray raw", "--edges padded", "the library's own gray has native edges alone");
  return found;
}

std::vector<std::string> ConversionOptions::idleFor(const vistrel_frame& frame) const {
  std::vector<std::string> idle;
  const bool mono = frame.phase == VISTREL_MONO;
  const auto onMono = [&idle](const std::string& option) {
    idle.push_back(option + " has no effect: the frame is mono");
  };
  if (mono && algorithm) onMono(std::string("--algorithm ") + algorithm->row->name);
  if (mono && preparation.edges == "padded") onMono("--edges padded");
  if (mono && !gray.empty()) onMono("--gray " + gray);
  if (depth == "reduce10" && frame.bits < 10)
    idle.push_back(
        fmt::format("--depth reduce10 has no effect: the frame has {} bits", frame.bits));
  return idle;
}

Wording ConversionOptions::words() const {
  Wording words{{"frame.samples", "sample", ""},
                {"conversion.gray", "--gray", gray},
                {"conversion.region", "--roi", ""},
                format.empty() ? Word{"conversion.format", "--depth", depth}
                               : Word{"conversion.format", "--format", format}};
  append(words, tone.words());
  append(words, preparation.words());
  return words;
}

}  // namespace vistrel::app
