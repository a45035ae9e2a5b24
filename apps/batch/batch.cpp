#include "apps/batch/batch.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

#include "apps/batch/workers.h"
#include "apps/files/temporary_file.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

// Nanoseconds since 1970 of the last change; nothing where there is no such file.
std::optional<int64_t> modified(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

Origin originOf(const Job& job, const std::string& options) {
  std::error_code none;  // for standard input
  const uint64_t bytes = fs::file_size(job.from, none);
  return {job.from.string(), job.frame, none ? 0 : bytes, modified(job.from).value_or(0), options};
}

std::string nameOf(const Job& job) {
  if (!job.frame) return job.from.string();
  return fmt::format("{}, frame {}", job.from.string(), *job.frame);
}

unsigned threadsFor(unsigned workers) {
  return workers ? workers : std::clamp(std::thread::hardware_concurrency(), 1u, kMaxWorkers);
}

}  // namespace

const Image& Desk::convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  if (!stream_) stream_ = Stream::acquire();
  image_.layout = layoutOf(frame, conversion);
  image_.pixels.resize(image_.layout.bytes);
  stream_->convertInto(frame, conversion, image_.pixels);
  return image_;
}

Batch::Batch(Plan plan, const BatchOptions& options, Work work)
    : plan_(std::move(plan)), options_(options), work_(std::move(work)), results_(jobs().size()),
      ended_(jobs().size()) {
  if (!options_.manifest.empty())
    manifest_ = std::make_unique<Manifest>(options_.manifest, options_.dryRun);
}

ExitStatus Batch::run() {
  if (!options_.dryRun) removeAbandoned();
  progress_ = std::make_unique<Progress>(jobs().size(), options_.progress);
  for (const std::string& remark : remarks()) progress_->say(remark);
  std::vector<Desk> desks(threadsFor(options_.workers));
  runTasks({jobs().size(), [&](size_t i, size_t worker) { return runJob(i, desks[worker]); },
            [this](size_t i) { ended(i); }},
           static_cast<unsigned>(desks.size()));
  sumUp();
  progress_.reset();
  if (manifest_) manifest_->finish();
  return status();
}

void Batch::removeAbandoned() const {
  std::set<fs::path> folders;
  for (const Job& job : jobs()) folders.insert(job.to.parent_path());
  for (const fs::path& folder : folders) removeAbandonedIn(folder.empty() ? "." : folder);
}

bool Batch::runJob(size_t i, Desk& desk) {
  const auto start = std::chrono::steady_clock::now();
  Result& result = results_[i];
  result.outcome = attempt([&] { result.state = doJob(jobs()[i], result, desk); });
  if (result.outcome.status != kDone) result.state = State::kFailed;
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return result.state != State::kFailed || options_.keepGoing || options_.dryRun;
}

State Batch::doJob(const Job& job, Result& result, Desk& desk) {
  if (job.refusal.status != kDone) throw Failure(job.refusal.status, job.refusal.text);
  const Origin origin = originOf(job, work_.options);
  if (!options_.overwrite && isUpToDate(job, origin)) return State::kUpToDate;
  if (options_.dryRun) {
    result.prospect = work_.check(job);
    return State::kPlanned;
  }
  Made made = work_.make(job, desk);
  result.prospect = std::move(made.prospect);
  if (manifest_) manifest_->add(job.to, {origin, fs::file_size(job.to), made.crc});
  return State::kMade;
}

bool Batch::isUpToDate(const Job& job, const Origin& origin) const {
  if (manifest_) return manifest_->holds(job.to, origin);
  const auto made = job.oneOfMany ? modified(job.to) : std::nullopt;
  return made && *made > origin.modified &&
         std::all_of(work_.sources.begin(), work_.sources.end(),
                     [made](const fs::path& source) { return *made > modified(source); });
}

void Batch::ended(size_t i) {
  const Result& result = results_[i];
  const vistrel_layout& l = result.prospect.layout;
  if (result.state == State::kMade)
    progress_->made(uint64_t{l.width} * l.height);
  else
    progress_->passed();
  ended_[i] = true;
  while (told_ < jobs().size() && ended_[told_]) tell(told_++);
}

void Batch::tell(size_t i) {
  const Job& job = jobs()[i];
  const Result& result = results_[i];
  if (i > 0 && jobs()[i - 1].from != job.from) said_.clear();
  for (const std::string& remark : result.prospect.remarks)
    if (said_.insert(remark).second)
      progress_->say(fmt::format("{}: {}", job.from.string(), remark));
  if (result.state == State::kFailed)
    progress_->say(fmt::format("{}: {}", nameOf(job), result.outcome.text));
  if (!options_.dryRun || options_.json) return;
  if (result.state == State::kUpToDate)
    fmt::print("{} -> {}: up to date\n", nameOf(job), job.to.string());
  if (result.state != State::kPlanned) return;
  const vistrel_layout& l = result.prospect.layout;
  fmt::print("{} -> {}: {}x{}, {} of {} bits\n", nameOf(job), job.to.string(), l.width, l.height,
             l.channels == 1 ? "gray" : "colour", l.bits);
}

void Batch::sumUp() {
  const auto count = [this](State state) {
    return std::count_if(results_.begin(), results_.end(),
                         [state](const Result& result) { return result.state == state; });
  };
  if (const auto n = count(State::kUpToDate); n > 0 && !options_.dryRun)
    progress_->say(fmt::format("up to date: {} of {}{}; --overwrite makes them again", n,
                               jobs().size(), manifest_ ? "" : ", whatever their options were"));
  if (const auto n = count(State::kNotBegun); n > 0)
    progress_->say(
        fmt::format("not begun: {} of {}; --keep-going goes on after a failure", n, jobs().size()));
}

ExitStatus Batch::status() const {
  Tally tally;
  for (const Result& result : results_)
    result.state == State::kNotBegun ? tally.leave() : tally.add(result.outcome.status);
  return tally.status();
}

}  // namespace vistrel::app
