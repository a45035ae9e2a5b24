#include "apps/commands/conversion_job.h"

#include <algorithm>

#include "apps/commands/camera_details.h"
#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/look/frame_statistics.h"

namespace vistrel::app {
namespace {

constexpr uint64_t kReliable = 256;  // samples that gains are measured on

// What the file says about its camera and the conversion leaves aside.
std::vector<std::string> unusedMetadata(const CameraMetadata& m, bool isMono,
                                        const PreparationOptions& given) {
  std::vector<std::string> unused;
  if (m.black && std::ranges::max(*m.black) > 0 && !given.black) {
    const bool areEqual = std::ranges::count(*m.black, m.black->front()) == 4;
    unused.push_back(areEqual ? fmt::format("black {}", m.black->front())
                              : fmt::format("black {}", fmt::join(*m.black, ":")));
  }
  if ((m.neutral || m.light) && !isMono && given.balance.empty()) unused.push_back("a neutral");
  if (!m.calibrations.empty() && !isMono) unused.push_back("a colour matrix");
  if (m.orientation.value_or(1) != 1)
    unused.push_back(fmt::format("orientation {}", *m.orientation));
  return unused;
}

// "the file reports black 96 and orientation 6, which ..."
std::string noteOf(const std::vector<std::string>& unused) {
  std::string list = unused.front();
  for (size_t i = 1; i < unused.size(); ++i)
    list += (i + 1 == unused.size() ? " and " : ", ") + unused[i];
  return fmt::format("the file reports {}, which convert leaves unused; develop applies {}", list,
                     unused.size() > 1 ? "them" : "it");
}

}  // namespace

ConversionJob::ConversionJob(const Job& job, const ConversionRun& run, Preview& preview)
    : FileJob(job, run.input, preview), run_(run), options_(run.options),
      conversion_(options_.of(file_.frame())), type_(outputType(job.to)) {
  for (std::string& unused : options_.unusedOptions(file_.frame()))
    preview_.warnings.push_back(std::move(unused));
  run.calibration.apply(file_.frame(), conversion_);
  layout_ = layoutOf(file_.frame(), conversion_);
  const auto unused = unusedMetadata(file_.description().camera,
                                     file_.frame().phase == VISTREL_MONO, options_.preparation);
  if (!unused.empty()) preview_.warnings.push_back(noteOf(unused));
  if (type_.channels && type_.channels != layout_.channels) throwMisfit();
  checkHolds(type_, layout_, details());
}

void ConversionJob::describe() {
  preview_.layout = layout_;
  addOrigin(file_, conversion_, preview_);
}

// Samples follow light linearly unless a curve is applied.
PictureDetails ConversionJob::details() const {
  return {.encoding = options_.tone.curve.empty() ? kLinearLight : Encoding{},
          .command = commandText("convert", job_.from.filename(), job_, run_.given),
          .shot = shotOf(file_.description().camera),
          .compression = run_.compression};
}

const Image& ConversionJob::make(uint64_t n, Worker& worker) {
  return withOriginOfBits(file_, [&]() -> const Image& {
    const vistrel_frame& frame = file_.read(n);
    vistrel_conversion conversion = conversion_;
    measureGains(frame, conversion);
    return worker.convert(frame, conversion);
  });
}

// Measures the gains of gray-world here rather than in the library, so that the user sees them.
void ConversionJob::measureGains(const vistrel_frame& frame, vistrel_conversion& conversion) {
  if (conversion.white_balance != VISTREL_BALANCE_GRAY_WORLD) return;
  vistrel_conversion measuring = conversion;
  measuring.region = options_.preparation.balanceRegion.value_or(vistrel_region{});
  const OptionNames names{{"conversion.region", "--wb auto:"}};
  const auto measured =
      withOptionNames(names, [&] { return vistrel::measureGains(frame, measuring); });
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  std::copy(measured.begin(), measured.end(), conversion.gains);
  auto& gains = preview_.gains;
  gains.clear();
  for (const uint32_t gain : measured) gains.push_back(gain / double{int{VISTREL_GAIN_ONE}});
  preview_.warnings.push_back(
      fmt::format("--wb auto: the gains are --wb {:.4f}", fmt::join(gains, ",")));
  const uint64_t samples = balancedSamples(frame, measuring.white, measuring.region);
  if (samples < kReliable)
    preview_.warnings.push_back(fmt::format(
        "--wb auto: only {} samples count; {} or more are reliable", samples, kReliable));
}

// The picture's type has another number of channels than the result.
void ConversionJob::throwMisfit() const {
  const char* const kinds[] = {"", "gray", "", "colour", "colour with alpha"};
  const char* const types[] = {"", ".pgm", "", ".ppm", ".pam"};
  const std::string& format = options_.format;
  const std::string cause =
      format.empty() ? fmt::format("a {} frame becomes", vistrel_phase_name(file_.frame().phase))
                     : fmt::format("--format {} makes", format);
  throwError(kRejected, "{} {}, and {} holds {}: use {} or .png{}", cause, kinds[layout_.channels],
             job_.to.string(), kinds[type_.channels], types[layout_.channels],
             format.empty() && type_.channels == 1 ? ", or --format gray8" : "");
}

}  // namespace vistrel::app
