#include "apps/commands/development_job.h"

#include <algorithm>

#include "apps/commands/camera_details.h"
#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/input/readers.h"
#include "apps/look/camera_look.h"
#include "apps/look/decide_calibrated.h"
#include "apps/look/finished_look.h"
#include "apps/options/geometry.h"
#include "apps/options/orientation.h"

namespace vistrel::app {
namespace {

// Only some curves have a name in files.
Encoding encodingOf(const Transfer& transfer) {
  constexpr double kThousandths = 1000;
  switch (transfer.curve) {
    case Curve::kLinear: return kLinearLight;
    case Curve::kSrgb: return {Encoding::kSrgb};
    case Curve::kGamma: return {Encoding::kPower, kThousandths / transfer.parameter};
    case Curve::kAsinh: break;
  }
  return {};
}

// Parts of the look that mono frames don't have.
std::vector<std::string> unusedParts(const KnownLook& known, const vistrel_frame& frame) {
  std::vector<std::string> unused;
  const auto add = [&unused](bool isKnown, const char* part) {
    if (isKnown) unused.push_back(fmt::format("--look {}= has no effect: the frame is mono", part));
  };
  if (frame.phase != VISTREL_MONO) return unused;
  add(known.gains.has_value(), "gains");
  add(known.matrix.has_value(), "matrix");
  add(known.neutralHighlights.has_value(), "highlights");
  return unused;
}

// A single picture in place of a film.
std::filesystem::path pictureLike(const std::filesystem::path& film) {
  return isStandardOutput(film) ? "frame.png"
                                : std::filesystem::path(film).replace_extension(".png");
}

}  // namespace

void Development::lookAt(const Job& job) {
  Preview preview;
  DevelopmentJob open(job, *this, preview);
  look_ = open.decide();
  bits_ = open.frame().bits;
  phase_ = open.frame().phase;
}

// Frames that can't be read fail once more as jobs.
void Development::lookAt(BatchPlan& plan, bool keepGoing) {
  const Job& first = plan.jobs.front();
  if (!options_.same || isArriving(first.from, input_)) return;
  for (const Job& job : plan.jobs) {
    const Outcome outcome = attempt([&] { lookAt(job); });
    if (outcome.status != kDone && !keepGoing)
      throwError(outcome.status, "--same: {}: {}", first.from.string(), outcome.text);
    if (outcome.status != kDone) continue;
    if (&job != &first)
      plan.warnings.push_back(fmt::format(
          "--same: the look is that of {}, the first one that can be read", job.from.string()));
    return;
  }
}

// Black levels are those of the places of the 2x2 block.
void Development::checkSame(const vistrel_frame& frame) const {
  if (!look_) return;
  if (bits_ != frame.bits)
    throwError(kRejected, "--same: the first frame has {} bits; this one has {}", bits_,
               frame.bits);
  if (phase_ != frame.phase)
    throwError(kRejected, "--same: the phase of the first frame is {}; that of this one is {}",
               vistrel_phase_name(phase_), vistrel_phase_name(frame.phase));
}

DevelopmentJob::DevelopmentJob(const Job& job, const Development& development, Preview& preview)
    : FileJob(job, development.input(), preview), development_(development),
      conversion_(development.options().of(file_)), type_(outputType(job.to)) {
  development.checkSame(file_.frame());
  warnOfUnusedOptions();
  development.calibration().apply(file_.frame(), conversion_);
  layout_ = layoutOf(file_.frame(), conversion_);
  if (type_.channels && type_.channels != layout_.channels)
    throwError(kRejected, "{} can't hold this picture, which has {} channel{}: use .png",
               job.to.string(), layout_.channels, layout_.channels == 1 ? "" : "s");
  checkHolds(type_, layout_, details_);
}

void DevelopmentJob::warnOfUnusedOptions() {
  const DevelopOptions& o = development_.options();
  for (const auto& unused :
       {o.conversion.unusedOptions(file_.frame()), unusedParts(o.look.known, file_.frame())})
    preview_.warnings.insert(preview_.warnings.end(), unused.begin(), unused.end());
}

void DevelopmentJob::describe() {
  preview_.layout = layout_;
  addOrigin(file_, conversion_, preview_);
}

Look DevelopmentJob::decide(const vistrel_frame& frame) const {
  const SensorCalibration& calibration = development_.calibration();
  CameraMetadata camera = file_.description().camera;
  if (calibration.hasDark()) {
    camera.black.reset();
    if (camera.white) *camera.white -= calibration.darkMean();
  }
  const LookChoice choice =
      withCamera(development_.options().look, camera, frame.phase == VISTREL_MONO);
  const Look look = calibration.isEmpty()
                        ? decideLook(frame, choice, conversion_.region)
                        : decideCalibrated(frame, choice, *conversion_.calibration,
                                           conversion_.excess, conversion_.region);
  checkBlack(development_.options().look.known, look, frame);
  return look;
}

Look DevelopmentJob::decide() { return decide(file_.read(job_.frame.value_or(file_.chosen()))); }

Look DevelopmentJob::lookOf(const vistrel_frame& frame) {
  if (const auto& shared = development_.look()) return *shared;
  if (!development_.options().same) return decide(frame);
  if (!first_) first_ = decide(frame);
  return *first_;
}

const Image& DevelopmentJob::make(uint64_t n, Worker& worker) {
  return withOriginOfBits(file_, [&]() -> const Image& {
    const vistrel_frame& frame = file_.read(n);
    const Look look = lookOf(frame);
    const FinishedLook finished(look);
    vistrel_conversion conversion = conversion_;
    finished.apply(frame, conversion);
    decided(look, n);
    return worker.convert(frame, conversion);
  });
}

void DevelopmentJob::decided(const Look& look, uint64_t n) {
  const std::string options = optionsOf(look);
  Job one = job_;  // for this picture alone
  if (file_.frames() > 1 && !development_.input().frame) one.frame = n;
  details_ = {.encoding = encodingOf(look.transfer),
              .command = commandText("develop", job_.from.filename(), one, options),
              .shot = shotOf(file_.description().camera),
              .compression = development_.compression()};
  const bool isOfFilm = one.frame != job_.frame;
  if (isOfFilm && !development_.options().same) one.to = numbered(pictureLike(job_.to), n);
  const Job& repeated = isOfFilm && development_.options().same ? job_ : one;
  preview_.command =
      commandText("develop", job_.from, repeated, options) + " -o " + fileWord(repeated.to);
  preview_.settings = settingsOf(look);
}

AlgorithmChoice DevelopmentJob::algorithm() const {
  return development_.options().conversion.algorithm.value_or(DevelopOptions::usualAlgorithm());
}

nlohmann::ordered_json DevelopmentJob::settingsOf(const Look& look) const {
  const bool isMono = file_.frame().phase == VISTREL_MONO;
  nlohmann::ordered_json settings{{"look", jsonOf(look, isMono)}};
  if (!isMono) settings["algorithm"] = labelOf(algorithm());
  settings["orientation"] = orientationName(conversion_.orientation);
  return settings;
}

std::string DevelopmentJob::optionsOf(const Look& look) const {
  const bool isMono = file_.frame().phase == VISTREL_MONO;
  std::string text = development_.given();
  if (!text.empty()) text += " ";
  if (!isMono) text += "-a " + labelOf(algorithm()) + " ";
  if (conversion_.region.width) text += "--roi " + regionText(conversion_.region) + " ";
  text += fmt::format("--orient {}", orientationName(conversion_.orientation));
  return text + " --look " + lookText(look, isMono);
}

}  // namespace vistrel::app
