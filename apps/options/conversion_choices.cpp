// Checks of the conversion options against each other and against a frame.
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
  vistrel_conversion c{};
  apply(c);
  return {{fmt::format("reduction {}", c.reduction), typed()},
          {fmt::format("table_entries {}", c.table_entries),
           fmt::format("{}: {} entries", typed(), c.table_entries)},
          {"; truncate_to 12 drops the lowest ones first", ""}};
}

std::vector<std::string> ConversionOptions::conflicts() const {
  std::vector<std::string> found;
  const auto clash = [&found](const std::string& one, const std::string& other, const char* why) {
    found.push_back(fmt::format("{} and {} cannot be combined: {}", one, other, why));
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

std::vector<std::string> ConversionOptions::unusedOptions(const vistrel_frame& frame) const {
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
  Wording words{{"truncate_to 12", "--depth reduce10"},
                {"gray 1 (raw)", "--gray raw"},
                {"0 (luma)", "luma"},
                {fmt::format("MONO8 ({}), MONO16 ({})", int{VISTREL_MONO8}, int{VISTREL_MONO16}),
                 "gray8 and gray16"}};
  append(words, tone.words());
  append(words, preparation.words());
  const std::string typed = format.empty() ? "--depth " + depth : "--format " + format;
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i)
    words.push_back({std::string("format ") + f->name, typed});
  if (region) {
    const auto place =
        fmt::format("{}x{}+{}+{}", region->width, region->height, region->x, region->y);
    words.push_back({"region " + place, "--roi " + place});
  }
  return words;
}

}  // namespace vistrel::app
