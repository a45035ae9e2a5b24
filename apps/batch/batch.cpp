#include "apps/batch/batch.h"

#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

#include "apps/batch/run_tasks.h"
#include "apps/files/atomic_file.h"
#include "apps/files/temporary_file.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

// Time of the last change, in nanoseconds since 1970; empty if there is no such file.
std::optional<int64_t> modified(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

Provenance provenanceOf(const Job& job, const std::string& options) {
  std::error_code none;  // set for standard input
  const uint64_t bytes = fs::file_size(job.from, none);
  return {job.from.string(), job.frame, none ? 0 : bytes, modified(job.from).value_or(0), options};
}

std::string nameOf(const Job& job) {
  if (!job.frame) return job.from.string();
  return fmt::format("{}, frame {}", job.from.string(), *job.frame);
}

uint32_t crcOf(const Bytes& bytes) {
  return static_cast<uint32_t>(crc32_z(0, bytes.data(), bytes.size()));
}

unsigned threadsFor(unsigned workers) {
  return workers ? workers : std::clamp(std::thread::hardware_concurrency(), 1u, kMaxWorkers);
}

}  // namespace

const Image& Worker::convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  if (!stream_) stream_ = Stream::acquire();
  stream_.convertInto(frame, conversion, image_);
  return image_;
}

Batch::Batch(BatchPlan plan, const BatchOptions& options, BatchTask task)
    : plan_(std::move(plan)), options_(options), task_(std::move(task)), results_(jobs().size()),
      ended_(jobs().size()) {
  if (!options_.manifest.empty())
    manifest_ = std::make_unique<Manifest>(options_.manifest, options_.dryRun);
}

ExitStatus Batch::run() {
  if (!options_.dryRun) removeStale();
  progress_ = std::make_unique<Progress>(jobs().size(), options_.progress);
  for (const std::string& warning : warnings()) progress_->say(warning);
  std::vector<Worker> workers(threadsFor(options_.workers));
  runTasks({jobs().size(), [&](size_t i, size_t worker) { return runJob(i, workers[worker]); },
            [this](size_t i) { ended(i); }},
           static_cast<unsigned>(workers.size()));
  printSummary();
  progress_.reset();
  if (manifest_) manifest_->finish();
  return status();
}

void Batch::removeStale() const {
  std::set<fs::path> folders;
  for (const Job& job : jobs()) folders.insert(job.to.parent_path());
  for (const fs::path& folder : folders) removeStaleFiles(folder.empty() ? "." : folder);
}

bool Batch::runJob(size_t i, Worker& worker) {
  const auto start = std::chrono::steady_clock::now();
  JobResult& result = results_[i];
  result.outcome = attempt([&] { result.state = doJob(jobs()[i], result, worker); });
  if (result.outcome.status != kDone) result.state = JobState::kFailed;
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return result.state != JobState::kFailed || options_.keepGoing || options_.dryRun;
}

JobState Batch::doJob(const Job& job, JobResult& result, Worker& worker) {
  if (job.outcome.status != kDone) {
    result.preview.warnings = job.warnings;
    throw ProgramError(job.outcome.status, job.outcome.text);
  }
  const Provenance provenance = provenanceOf(job, task_.options);
  // What comes through a pipe has no time, so it counts as new.
  if (!options_.overwrite && modified(job.from) && isUpToDate(job, provenance))
    return JobState::kUpToDate;
  if (options_.dryRun) {
    task_.check(job, result.preview);
    return JobState::kPlanned;
  }
  task_.make(job, worker, result.preview);
  if (manifest_)
    manifest_->add(job.to, {provenance, fs::file_size(job.to), crcOf(worker.image().pixels)});
  return JobState::kMade;
}

bool Batch::isUpToDate(const Job& job, const Provenance& provenance) const {
  if (manifest_) return manifest_->holds(job.to, provenance);
  const auto made = job.oneOfMany ? modified(job.to) : std::nullopt;
  return made && *made > provenance.modified &&
         std::all_of(task_.sources.begin(), task_.sources.end(),
                     [made](const fs::path& source) { return *made > modified(source); });
}

void Batch::ended(size_t i) {
  const JobResult& result = results_[i];
  const vistrel_layout& l = result.preview.layout;
  if (result.state == JobState::kMade)
    progress_->made(uint64_t{l.width} * l.height);
  else
    progress_->passed();
  ended_[i] = true;
  while (reported_ < jobs().size() && ended_[reported_]) report(reported_++);
}

void Batch::report(size_t i) {
  const Job& job = jobs()[i];
  const JobResult& result = results_[i];
  if (i > 0 && jobs()[i - 1].from != job.from) shown_.clear();
  for (const std::string& warning : result.preview.warnings)
    if (shown_.insert(warning).second)
      progress_->say(fmt::format("{}: {}", job.from.string(), warning));
  if (result.state == JobState::kFailed)
    progress_->say(fmt::format("{}: {}", nameOf(job), result.outcome.text));
  if (!result.preview.command.empty() && !options_.json) printCommand(job, result.preview.command);
  if (!options_.dryRun || options_.json) return;
  if (result.state == JobState::kUpToDate)
    fmt::print("{} -> {}: up to date\n", nameOf(job), job.to.string());
  if (result.state != JobState::kPlanned) return;
  const vistrel_layout& l = result.preview.layout;
  fmt::print("{} -> {}: {}x{}, {} of {} bits\n", nameOf(job), job.to.string(), l.width, l.height,
             l.channels == 1 ? "gray" : "colour", l.bits);
}

// On standard output, unless that is for the picture.
void Batch::printCommand(const Job& job, const std::string& command) {
  progress_->clear();
  fmt::print(isStandardOutput(job.to) ? stderr : stdout, "{}\n", command);
}

void Batch::printSummary() {
  const auto count = [this](JobState state) {
    return std::count_if(results_.begin(), results_.end(),
                         [state](const JobResult& result) { return result.state == state; });
  };
  if (const auto n = count(JobState::kUpToDate); n > 0 && !options_.dryRun)
    progress_->say(fmt::format("up to date: {} of {}{}; --overwrite remakes them", n, jobs().size(),
                               manifest_ ? "" : ", regardless of their options"));
  if (const auto n = count(JobState::kNotBegun); n > 0)
    progress_->say(fmt::format("not begun: {} of {}; --keep-going continues after a failure", n,
                               jobs().size()));
}

ExitStatus Batch::status() const {
  ExitStatusSum sum;
  for (const JobResult& result : results_)
    result.state == JobState::kNotBegun ? sum.addSkipped() : sum.add(result.outcome.status);
  return sum.status();
}

}  // namespace vistrel::app
