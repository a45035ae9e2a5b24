#include "apps/commands/conversion_job.h"

#include <algorithm>

#include "apps/commands/picture_request.h"
#include "apps/error.h"

namespace vistrel::app {
namespace {

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

ConversionJob::ConversionJob(const Job& job, const InputOptions& input,
                             const ConversionOptions& options, const SensorCalibration& calibration)
    : job_(job), options_(options), file_(job.from, input), conversion_(options.of(file_.frame())),
      type_(outputType(job.to)), notes_(options.unusedOptions(file_.frame())) {
  calibration.apply(file_.frame(), conversion_);
  layout_ = layoutOf(file_.frame(), conversion_);
  const auto unused = unusedMetadata(file_.description().camera,
                                     file_.frame().phase == VISTREL_MONO, options.preparation);
  if (!unused.empty()) notes_.push_back(noteOf(unused));
  if (type_.channels && type_.channels != layout_.channels) throwMisfit();
}

Preview ConversionJob::preview() const {
  Preview preview{layout_, file_.warnings(), gains_};
  preview.warnings.insert(preview.warnings.end(), notes_.begin(), notes_.end());
  if (!gains_.empty())
    preview.warnings.push_back(
        fmt::format("--wb auto: the gains are --wb {:.4f}", fmt::join(gains_, ",")));
  addOrigin(file_, conversion_, preview);
  return preview;
}

JobOutput ConversionJob::run(Worker& worker) {
  JobOutput made = writePicture(make(job_.frame.value_or(file_.chosen()), worker), type_, job_.to);
  made.preview = preview();
  return made;
}

const Image& ConversionJob::make(uint64_t n, Worker& worker) {
  const vistrel_frame& frame = file_.read(n);
  vistrel_conversion conversion = conversion_;
  measureGains(frame, conversion);
  return worker.convert(frame, conversion);
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
  gains_.clear();
  for (const uint32_t gain : measured) gains_.push_back(gain / double{int{VISTREL_GAIN_ONE}});
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
