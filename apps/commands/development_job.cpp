#include "apps/commands/development_job.h"

#include <algorithm>

#include "apps/commands/camera_details.h"
#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/options/geometry.h"
#include "apps/options/orientation.h"

namespace vistrel::app {
namespace {

// Only some curves have a name in files.
Encoding encodingOf(const Transfer& transfer) {
  constexpr double kOne = 1000;
  switch (transfer.curve) {
    case Curve::kLinear: return kLinearLight;
    case Curve::kSrgb: return {Encoding::kSrgb};
    case Curve::kGamma: return {Encoding::kPower, kOne / transfer.parameter};
    case Curve::kAsinh: break;
  }
  return {};
}

bool isPart(const Crop& crop, const vistrel_frame& frame) {
  return crop.width < frame.width || crop.height < frame.height;
}

// A stage that leaves everything as it is, for the layout of the result.
const vistrel_finish kPlainFinish{0, VISTREL_EXPOSURE_ONE, {}, 0, nullptr, {}};

vistrel_conversion conversionOf(const DevelopOptions& o, const FrameFile& file) {
  const vistrel_frame& frame = file.frame();
  const CameraMetadata& camera = file.description().camera;
  ConversionOptions options = o.conversion;
  if (!options.algorithm) options.algorithm = DevelopOptions::usualAlgorithm();
  vistrel_conversion c = options.of(frame);
  c.bin_mode = VISTREL_BIN_MEAN;
  c.orientation = options.orientation.value_or(camera.orientation.value_or(VISTREL_UPRIGHT));
  if (!options.region && camera.crop && isPart(*camera.crop, frame))
    c.region = {camera.crop->x, camera.crop->y, camera.crop->width, camera.crop->height};
  c.finish = &kPlainFinish;
  return c;
}

}  // namespace

AlgorithmChoice DevelopOptions::usualAlgorithm() {
  return parseAlgorithm("--algorithm", kDevelopAlgorithm);
}

void Development::lookAt(const Job& first) {
  if (!options_.same) return;
  try {
    DevelopmentJob job(first, *this);
    look_ = job.decide();
    bits_ = job.bits();
  } catch (const ProgramError& error) {
    throwError(error.status(), "--same: {}: {}", first.from.string(), error.what());
  }
}

DevelopmentJob::DevelopmentJob(const Job& job, const Development& development)
    : job_(job), development_(development), file_(job.from, development.input()),
      conversion_(conversionOf(development.options(), file_)), type_(pictureType(job.to)) {
  development.calibration().apply(file_.frame(), conversion_);
  layout_ = layoutOf(file_.frame(), conversion_);
  if (type_.channels && type_.channels != layout_.channels)
    throwError(kRejected, "{} can't hold this picture, which has {} channel{}: use .png",
               job.to.string(), layout_.channels, layout_.channels == 1 ? "" : "s");
}

Preview DevelopmentJob::preview() const {
  Preview preview{layout_, file_.warnings()};
  preview.command = command_;
  return preview;
}

const vistrel_frame& DevelopmentJob::read() {
  return job_.frame ? file_.read(*job_.frame) : file_.read();
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
  if (calibration.isEmpty()) return decideLook(frame, choice, conversion_.region);
  return decideCalibrated(frame, choice);
}

// Levels come from the frame as the sensor saw it, the rest from the calibrated one.
Look DevelopmentJob::decideCalibrated(const vistrel_frame& frame, const LookChoice& choice) const {
  Image memory;
  const auto after = [&](const vistrel_calibration& calibration, const BlackLevels& black) {
    return calibratedFrame(frame, calibration, black, conversion_.excess, memory);
  };
  const Look levels =
      decideLook(after(development_.calibration().darkOnly(), {}), choice, conversion_.region);
  LookChoice rest = choice;
  rest.known.black = BlackLevels{};
  rest.known.white = levels.white - std::ranges::min(levels.black);
  Look look = decideLook(after(*conversion_.calibration, levels.black), rest, conversion_.region);
  look.black = levels.black;
  look.white = levels.white;
  return look;
}

Look DevelopmentJob::decide() { return decide(read()); }

Preview DevelopmentJob::run(Worker& worker) {
  const vistrel_frame& frame = read();
  const auto& shared = development_.look();
  if (shared && development_.bits() != frame.bits)
    throwError(kRejected, "--same: the first frame has {} bits; this one has {}",
               development_.bits(), frame.bits);
  const Look look = shared ? *shared : decide(frame);
  const FinishedLook finished(look);
  finished.apply(frame, conversion_);
  const Image& image = worker.convert(frame, conversion_);
  const std::string options = optionsOf(look);
  savePicture(image,
              {.encoding = encodingOf(look.transfer),
               .command = commandText("develop", job_.from.filename(), job_, options),
               .shot = shotOf(file_.description().camera),
               .compression = development_.compression()},
              job_.to);
  command_ = commandText("develop", job_.from, job_, options) + " -o " + fileWord(job_.to);
  return preview();
}

std::string DevelopmentJob::optionsOf(const Look& look) const {
  const ConversionOptions& o = development_.options().conversion;
  std::string text = development_.given();
  if (!text.empty()) text += " ";
  text += "-a " + labelOf(o.algorithm.value_or(DevelopOptions::usualAlgorithm()));
  if (conversion_.region.width) text += " --roi " + regionText(conversion_.region);
  text += fmt::format(" --orient {}", orientationName(conversion_.orientation));
  return text + " --look " + lookText(look);
}

}  // namespace vistrel::app
