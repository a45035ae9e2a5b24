#include "apps/batch/film.h"

#include "apps/options/output_format.h"

namespace vistrel::app {
namespace {

bool haveSameLayout(const vistrel_layout& a, const vistrel_layout& b) {
  return a.width == b.width && a.height == b.height && a.channels == b.channels && a.bits == b.bits;
}

}  // namespace

bool isFilm(const std::filesystem::path& output) {
  if (outputKind(output) == OutputKind::y4m) return true;
  return isStandardOutput(output) && pictureType(output).many;
}

FilmOutput::FilmOutput(const std::filesystem::path& path, const FrameRate& rate)
    : path_(path), type_(outputType(path)), rate_(rate) {}

void FilmOutput::check(const Image& image) const {
  const vistrel_layout& l = image.layout;
  if (first_ && !haveSameLayout(*first_, l))
    throwError(kRejected, "{}x{}, {} channel{} of {} bits: all pictures must be like the first one",
               l.width, l.height, l.channels, l.channels > 1 ? "s" : "", l.bits);
}

void FilmOutput::add(const Image& image, const PictureDetails& details) {
  if (!first_ && type_.begin) type_.begin(image.layout, rate_, file());
  first_ = image.layout;
  type_.write(image, details, file());
  if (isStandardOutput(path_)) finish();
}

void FilmOutput::finish() {
  if (file_) file_->commit();
  file_.reset();
}

AtomicFile& FilmOutput::file() { return file_ ? *file_ : file_.emplace(path_); }

Film::Film(BatchPlan plan, const BatchOptions& options, BatchTask task, const FrameRate& rate)
    : plan_(std::move(plan)), options_(options), task_(std::move(task)), progress_(0, options),
      worker_(threadsFor(options.workers)), output_(plan_.jobs.front().to, rate) {}

ExitStatus Film::run() {
  const std::filesystem::path to = plan_.jobs.front().to;
  if (!options_.dryRun && !isStandardOutput(to)) prepareFolder(to.parent_path());
  for (const std::string& warning : plan_.warnings) progress_.note("", warning);
  bool goesOn = true;
  for (const Job& job : plan_.jobs) goesOn ? void(goesOn = runInput(job)) : sum_.addSkipped();
  if (goesOn && progress_.stats().made > 0) output_.finish();
  progress_.finish(progress_.stats().done > 1);
  return sum_.status();
}

bool Film::runInput(const Job& job) {
  Preview preview;
  std::unique_ptr<OpenJob> open;
  const Outcome outcome = attempt([&] {
    if (job.outcome.status != kDone) throw ProgramError(job.outcome.status, job.outcome.text);
    open = withOptionNames(task_.names, [&] { return task_.open(job, preview); });
    checkWritable(job.to);
  });
  if (outcome.status != kDone) {
    note(job, preview);
    return failed(job.from.string(), outcome);
  }
  open->describe();
  if (!options_.dryRun) return runFrames(job, *open, preview);
  note(job, preview);
  fmt::print("{}\n", planText(job.from.string(), job.to, preview.layout));
  sum_.add(kDone);
  return true;
}

bool Film::runFrames(const Job& job, OpenJob& open, Preview& preview) {
  for (uint64_t n = job.frame.value_or(0);; ++n) {
    bool there = false;
    const Outcome outcome = attempt([&] {
      there = open.has(n);
      if (!there && job.frame) throwError(kRejected, "--frame {}: the input ends before it", n);
    });
    if (outcome.status != kDone) return failed(job.from.string(), outcome);
    if (there && !runFrame(job, open, n, preview)) return false;
    if (!there || job.frame) break;
  }
  note(job, preview);
  return true;
}

bool Film::runFrame(const Job& job, OpenJob& open, uint64_t n, Preview& preview) {
  const std::string name =
      open.frames() > 1 ? fmt::format("{}, frame {}", job.from.string(), n) : job.from.string();
  const Image* image = nullptr;
  const Outcome outcome = attempt([&] {
    image = withOptionNames(task_.names, [&] { return &open.make(n, worker_); });
    output_.check(*image);
  });
  note(job, preview);
  if (outcome.status != kDone) return failed(name, outcome);
  add(name, *image, open.details());
  if (preview.command != printed_ && !options_.quiet)
    printCommand(progress_, job.to, printed_ = preview.command);
  progress_.made(uint64_t{preview.layout.width} * preview.layout.height, preview.frameBytes);
  keepForInterrupts(progress_.stats(), options_);
  sum_.add(kDone);
  return true;
}

// Nothing can follow a picture that is incomplete.
void Film::add(const std::string& name, const Image& image, const PictureDetails& details) {
  const Outcome outcome = attempt([&] { output_.add(image, details); });
  if (outcome.status != kDone) throw ProgramError(outcome.status, name + ": " + outcome.text);
}

// Each warning once: frame after frame adds its own.
void Film::note(const Job& job, Preview& preview) {
  for (const std::string& warning : preview.warnings) progress_.note(job.from.string(), warning);
  preview.warnings.clear();
}

bool Film::failed(const std::string& name, const Outcome& outcome) {
  progress_.say(fmt::format("{}: {}", name, outcome.text));
  progress_.failed();
  sum_.add(outcome.status);
  return options_.keepGoing || options_.dryRun;
}

}  // namespace vistrel::app
