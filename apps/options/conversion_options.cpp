#include "apps/options/conversion_options.h"

#include "apps/error.h"
#include "apps/names/curve_names.h"
#include "apps/options/geometry.h"
#include "apps/options/options.h"
#include "apps/options/orientation.h"

namespace vistrel::app {
namespace {

constexpr uint32_t kReduced = 10;  // bits

bool isNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

// A mono frame can only become gray; without --format, --depth sets its bits.
uint32_t formatOf(const ConversionOptions& o, bool mono) {
  const OutputFormat& choice = o.outputFormat();
  const bool gray = o.format.empty() || o.format == "gray8" || o.format == "gray16";
  if (mono && gray) return choice.allBits ? VISTREL_MONO16 : VISTREL_MONO8;
  return o.output == OutputKind::picture ? choice.inPictures.value_or(choice.code) : choice.code;
}

}  // namespace

std::optional<std::filesystem::path> ToneOptions::file() const {
  if (curve.empty() || findCurve(curve)) return {};
  if (isNumber(curve))
    throwError(kUsage, "--curve {}: 2 to 6, {}, or a file with a table, are allowed", curve,
               curveNameList(", "));
  return curve;
}

void ToneOptions::apply(vistrel_conversion& conversion) const {
  conversion.reduction = window.value_or(0);
  if (const auto number = findCurve(curve)) conversion.reduction = *number + 1;
  if (table.empty()) return;
  conversion.reduction = VISTREL_TABLE;
  conversion.table = table.data();
  conversion.table_entries = static_cast<uint32_t>(table.size());
}

const OutputFormat& ConversionOptions::outputFormat() const {
  if (!format.empty()) return app::outputFormat(format);
  if (output == OutputKind::y4m) return app::outputFormat("i420");
  return app::outputFormat(depth == "16" ? "bgr48" : "bgr24");
}

vistrel_conversion ConversionOptions::of(const vistrel_frame& frame) const {
  const bool mono = frame.phase == VISTREL_MONO, reduced = depth == "reduce10";
  const AlgorithmChoice chosen = algorithm.value_or(algorithmAt(0));
  vistrel_conversion c = defaultConversion(frame);
  c.format = formatOf(*this, mono);
  c.algorithm = chosen.row->code;
  c.threshold = chosen.threshold;
  c.gray = gray == "raw" ? VISTREL_RAW_GRAY : VISTREL_LUMA;
  c.binning = binning;
  c.truncate_to = reduced ? kReduced : 0;
  preparation.apply(c);
  tone.apply(c);
  c.excess = mask ? VISTREL_MASK : VISTREL_REJECT;
  c.region = region.value_or(vistrel_region{});
  c.bin_mode = means ? VISTREL_BIN_MEAN : VISTREL_BIN_SUM;
  c.orientation = orientation.value_or(VISTREL_UPRIGHT);
  return c;
}

void addToneOptions(CLI::App& command, ToneOptions& o) {
  auto* window =
      between(command.add_option("--window", o.window,
                                 "Which 8 bits to keep: 0 the highest, 1 or 2 lower ones (0)"),
              0, 2);
  aFile(
      command.add_option("--curve", o.curve, "Tone curve, or a text or PGM of 1024 values 0..255"))
      ->type_name("2..6|" + curveNameList("|") + "|FILE")
      ->excludes(window);
}

void addAlgorithmOption(CLI::App& command, ConversionOptions& o, const char* usual) {
  command
      .add_option_function<std::string>(
          "-a,--algorithm",
          [&o](const std::string& s) { o.algorithm = parseAlgorithm("--algorithm", s); },
          fmt::format("Demosaic algorithm ({}): see `algorithms`", usual))
      ->type_name("NAME[:N]");
}

void addRegionOption(CLI::App& command, ConversionOptions& o) {
  command
      .add_option_function<std::string>(
          "--roi", [&o](const std::string& s) { o.region = parseRegion("--roi", s); },
          "Region in sensor pixels, rounded down to whole bins")
      ->type_name("WxH+X+Y");
}

CLI::Option* addFormatOptions(CLI::App& command, ConversionOptions& o,
                              const std::vector<std::string>& depths, const char* depthMeaning) {
  oneOf(command.add_option("--depth", o.depth, depthMeaning), depths);
  auto* format =
      oneOf(command.add_option("--format", o.format, "Pixel format of the result (bgr24)"),
            outputFormatNames());
  command.add_flag("--mask", o.mask, "Drop bits above the significant ones, don't reject");
  return format;
}

void addConversionOptions(CLI::App& command, ConversionOptions& o) {
  addAlgorithmOption(command, o, algorithmAt(0).row->name);
  addRegionOption(command, o);
  between(command.add_option("--bin", o.binning, "Sum blocks of N x N pixels (1)"), 1, 4);
  command.add_flag("--bin-means", o.means, "Means of these blocks, not sums divided by N");
  addPreparationOptions(command, o.preparation);
  addCalibrationOptions(command, o.calibration);
  addToneOptions(command, o.tone);
  addOrientOption(command, o.orientation, false);
  auto* format = addFormatOptions(command, o, {"8", "16", "reduce10"},
                                  "Bits per sample (8); reduce10: 8 of the 10 highest");
  oneOf(command.add_option("--gray", o.gray, "Luma of the colours, or raw gray (luma)"),
        {"luma", "raw"})
      ->needs(format);
}

}  // namespace vistrel::app
