#include "apps/batch/batch.h"

#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

#include "apps/batch/run_tasks.h"
#include "apps/files/atomic_file.h"
#include "apps/files/interrupts.h"
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

}  // namespace

unsigned threadsFor(unsigned workers) {
  return workers ? workers : std::clamp(std::thread::hardware_concurrency(), 1u, kMaxWorkers);
}

void prepareFolder(const fs::path& folder) {
  std::error_code error;  // writing will fail and say why
  if (!folder.empty()) fs::create_directories(folder, error);
  removeStaleFiles(folder.empty() ? "." : folder);
}

std::string planText(const std::string& input, const fs::path& to, const vistrel_layout& l) {
  return fmt::format("{} -> {}: {}x{}, {} of {} bits", input, to.string(), l.width, l.height,
                     l.channels == 1 ? "gray" : "colour", l.bits);
}

void printCommand(Progress& progress, const fs::path& to, const std::string& command) {
  progress.clear();
  fmt::print(isStandardOutput(to) ? stderr : stdout, "{}\n", command);
}

void keepForInterrupts(const ProgressStats& stats, const BatchOptions& options) {
  if (stats.total != 1 && !options.quiet && !options.dryRun) setInterruptedText(summaryOf(stats));
}

Batch::Batch(BatchPlan plan, const BatchOptions& options, BatchTask task)
    : plan_(std::move(plan)), options_(options), task_(std::move(task)), results_(jobs().size()),
      ended_(jobs().size()) {
  for (const fs::path& folder : folders())
    if (!options_.dryRun) prepareFolder(folder);
  if (!options_.manifest.empty())
    manifest_ = std::make_unique<Manifest>(options_.manifest, options_.dryRun);
}

ExitStatus Batch::run() {
  progress_ = std::make_unique<Progress>(jobs().size(), options_);
  keepForInterrupts(stats(), options_);
  for (const std::string& warning : warnings()) progress_->note("", warning);
  const unsigned workers = threadsFor(options_.workers);
  WorkerPool pool(workers);
  runTasks(
      {jobs().size(), [&](size_t i) { return runJob(i, pool); }, [this](size_t i) { ended(i); }},
      workers > 1 ? 2 * workers : 1);  // as many wait for the disk
  printHints();
  progress_->finish(jobs().size() > 1 && !options_.dryRun);
  if (manifest_) manifest_->finish();
  return status();
}

// Those of the pictures.
std::set<fs::path> Batch::folders() const {
  std::set<fs::path> folders;
  for (const Job& job : jobs()) folders.insert(job.to.parent_path());
  return folders;
}

bool Batch::runJob(size_t i, WorkerPool& workers) {
  WorkerPool::Lease worker(workers);
  const auto start = std::chrono::steady_clock::now();
  JobResult& result = results_[i];
  result.outcome = attempt([&] { result.state = doJob(jobs()[i], result, worker); });
  if (result.outcome.status != kDone) failed(result);
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return result.state != JobState::kFailed || options_.keepGoing || options_.dryRun;
}

JobState Batch::doJob(const Job& job, JobResult& result, WorkerPool::Lease& worker) {
  if (job.outcome.status != kDone) {
    result.preview.warnings = job.warnings;
    throw ProgramError(job.outcome.status, job.outcome.text);
  }
  const Provenance provenance = provenanceOf(job, task_.options);
  // What comes through a pipe has no time, so it counts as new.
  if (!options_.overwrite && modified(job.from) && isUpToDate(job, provenance))
    return JobState::kUpToDate;
  checkWritable(job.to);
  if (options_.dryRun) {
    withOptionNames(task_.names, [&] { task_.open(job, result.preview)->describe(); });
    return JobState::kPlanned;
  }
  const auto picture =
      withOptionNames(task_.names, [&] { return task_.open(job, result.preview)->run(*worker); });
  const uint32_t crc = manifest_ ? crcOf((*worker).image().pixels) : 0;
  worker.release();
  picture->commit();
  if (manifest_) manifest_->add(job.to, {provenance, fs::file_size(job.to), crc});
  return JobState::kMade;
}

// There is no picture that a command could make again.
void Batch::failed(JobResult& result) {
  result.state = JobState::kFailed;
  result.preview.command.clear();
  result.preview.settings = nullptr;
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
    progress_->made(uint64_t{l.width} * l.height, result.preview.frameBytes);
  else
    result.state == JobState::kFailed ? progress_->failed() : progress_->passed();
  keepForInterrupts(stats(), options_);
  ended_[i] = true;
  while (reported_ < jobs().size() && ended_[reported_]) report(reported_++);
}

void Batch::report(size_t i) {
  const Job& job = jobs()[i];
  const JobResult& result = results_[i];
  for (const std::string& warning : result.preview.warnings)
    progress_->note(job.from.string(), warning);
  if (result.state == JobState::kFailed)
    progress_->say(fmt::format("{}: {}", nameOf(job), result.outcome.text));
  if (!result.preview.command.empty() && !options_.json && !options_.quiet)
    printCommand(*progress_, job.to, result.preview.command);
  if (!options_.dryRun || options_.json) return;
  if (result.state == JobState::kUpToDate)
    fmt::print("{} -> {}: up to date\n", nameOf(job), job.to.string());
  if (result.state != JobState::kPlanned) return;
  fmt::print("{}\n", planText(nameOf(job), job.to, result.preview.layout));
}

void Batch::printHints() {
  const auto count = [this](JobState state) {
    return std::count_if(results_.begin(), results_.end(),
                         [state](const JobResult& result) { return result.state == state; });
  };
  if (const auto n = count(JobState::kUpToDate); n > 0 && !options_.dryRun) {
    plan_.warnings.push_back(fmt::format("up to date: {} of {}{}; --overwrite remakes them", n,
                                         jobs().size(),
                                         manifest_ ? "" : ", regardless of their options"));
    progress_->note("", plan_.warnings.back());
  }
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
