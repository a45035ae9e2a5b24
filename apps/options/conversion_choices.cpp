// Checks of the conversion options against each other and against a frame.
#include "apps/options/conversion_options.h"

namespace vistrel::app {
namespace {

void append(OptionNames& names, const OptionNames& more) {
  names.insert(names.end(), more.begin(), more.end());
}

}  // namespace

std::string ToneOptions::typed() const {
  if (!curve.empty()) return "--curve " + curve;
  return window ? fmt::format("--window {}", *window) : "";
}

OptionNames ToneOptions::optionNames() const {
  if (curve.empty()) return {};
  return {
      {"conversion.reduction", "--curve", curve, "develop --look has curves for any depth"},
      {"conversion.table_entries", "--curve", fmt::format("{}: {} entries", curve, table.size())}};
}

std::vector<std::string> ConversionOptions::conflicts() const {
  std::vector<std::string> found;
  const auto addConflict = [&found](const std::string& one, const std::string& other,
                                    const char* why) {
    found.push_back(fmt::format("{} and {} cannot be combined: {}", one, other, why));
  };
  const bool allBits = outputFormat().allBits, inPlanes = !outputFormat().inPictures;
  if (output == OutputKind::y4m && !format.empty() && format != "i420" && format != "i444")
    addConflict("--format " + format, "a .y4m", "that is i420 or i444");
  if (output == OutputKind::picture && inPlanes)
    addConflict("--format " + format, "such a picture", "only .raw and .y4m have planes");
  if (depth == "16" && !allBits && format.empty())
    addConflict("--depth 16", "a .y4m", "that has 8 bits");
  else if (depth == "16" && !allBits)
    addConflict("--depth 16", "--format " + format,
                "that format has 8 bits; bgr48 and gray16 keep all");
  if (depth == "8" && allBits)
    addConflict("--depth 8", "--format " + format,
                "that format keeps all bits; bgr24 and gray8 have 8");
  if (allBits && !tone.typed().empty())
    addConflict(tone.typed(), format.empty() ? "--depth 16" : "--format " + format,
                "the latter keeps all bits");
  if (!gray.empty() && format != "gray8" && format != "gray16")
    addConflict("--gray " + gray, "--format " + format, "it applies to gray8 and gray16 only");
  return found;
}

std::vector<std::string> ConversionOptions::unusedOptions(const vistrel_frame& frame) const {
  std::vector<std::string> unused;
  const bool mono = frame.phase == VISTREL_MONO;
  const auto onMono = [&unused](const std::string& option) {
    unused.push_back(option + " has no effect: the frame is mono");
  };
  if (mono && algorithm) onMono(std::string("--algorithm ") + algorithm->row->name);
  if (mono && preparation.edges == "padded") onMono("--edges padded");
  if (mono && !gray.empty()) onMono("--gray " + gray);
  if (preparation.white && !preparation.grayWorld)
    unused.push_back(fmt::format("--white {} has no effect without --wb auto", preparation.white));
  if (means && binning == 1) unused.push_back("--bin-means has no effect without --bin");
  if (depth == "reduce10" && frame.bits < 10)
    unused.push_back(
        fmt::format("--depth reduce10 has no effect: the frame has {} bits", frame.bits));
  return unused;
}

OptionNames ConversionOptions::optionNames() const {
  OptionNames names{
      {"conversion.algorithm", "--algorithm", "", "--depth reduce10 drops the lowest bits first"},
      {"conversion.gray", "--gray", gray},
      format.empty() ? OptionName{"conversion.format", "--depth", depth}
                     : OptionName{"conversion.format", "--format", format}};
  append(names, tone.optionNames());
  append(names, preparation.optionNames());
  return names;
}

}  // namespace vistrel::app
