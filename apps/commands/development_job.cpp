#include "apps/commands/development_job.h"

#include <algorithm>

#include "apps/commands/picture_request.h"
#include "apps/error.h"
#include "apps/input/readers.h"
#include "apps/options/geometry.h"
#include "apps/options/options.h"
#include "apps/options/orientation.h"

namespace vistrel::app {
namespace {

// A name that is no option, for a shell.
std::string fileWord(const std::filesystem::path& path) {
  const std::string name = path.string();
  return quoted(name.size() > 1 && name[0] == '-' ? "./" + name : name);
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
  if (!options_.same || isArriving(first.from, input_)) return;
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
      conversion_(conversionOf(development.options(), file_)), type_(outputType(job.to)) {
  development.calibration().apply(file_.frame(), conversion_);
  layout_ = layoutOf(file_.frame(), conversion_);
  if (type_.channels && type_.channels != layout_.channels)
    throwError(kRejected, "{} can't hold this picture, which has {} channel{}: use .png",
               job.to.string(), layout_.channels, layout_.channels == 1 ? "" : "s");
}

Preview DevelopmentJob::preview() const {
  Preview preview{layout_, file_.warnings()};
  preview.command = command_;
  addOrigin(file_, conversion_, preview);
  return preview;
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

Look DevelopmentJob::decide() { return decide(file_.read(job_.frame.value_or(file_.chosen()))); }

Look DevelopmentJob::lookOf(const vistrel_frame& frame) {
  const auto& shared = development_.look();
  if (shared && development_.bits() != frame.bits)
    throwError(kRejected, "--same: the first frame has {} bits; this one has {}",
               development_.bits(), frame.bits);
  if (shared) return *shared;
  if (!development_.options().same) return decide(frame);
  if (!first_) first_ = decide(frame);
  return *first_;
}

JobOutput DevelopmentJob::run(Worker& worker) {
  JobOutput made = writePicture(make(job_.frame.value_or(file_.chosen()), worker), type_, job_.to);
  made.preview = preview();
  return made;
}

const Image& DevelopmentJob::make(uint64_t n, Worker& worker) {
  const vistrel_frame& frame = file_.read(n);
  const Look look = lookOf(frame);
  const FinishedLook finished(look);
  vistrel_conversion conversion = conversion_;
  finished.apply(frame, conversion);
  command_ = commandLine(look, n);
  return worker.convert(frame, conversion);
}

std::string DevelopmentJob::commandLine(const Look& look, uint64_t n) const {
  const ConversionOptions& o = development_.options().conversion;
  std::string line = "vistrel develop " + fileWord(job_.from);
  if (!development_.given().empty()) line += " " + development_.given();
  if (file_.frames() > 1 && !development_.input().frame) line += fmt::format(" --frame {}", n);
  line += " -a " + labelOf(o.algorithm.value_or(DevelopOptions::usualAlgorithm()));
  if (conversion_.region.width) line += " --roi " + regionText(conversion_.region);
  line += fmt::format(" --orient {}", orientationName(conversion_.orientation));
  line += " --look " + lookText(look);
  return line + " -o " + fileWord(job_.to);
}

}  // namespace vistrel::app
