// Runs the jobs of a batch and records their results.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "apps/batch/jobs.h"
#include "apps/batch/manifest.h"
#include "apps/batch/worker.h"
#include "apps/files/atomic_file.h"
#include "apps/options/batch_options.h"
#include "apps/options/option_names.h"
#include "apps/pictures/picture_details.h"
#include "apps/progress/progress.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// What a conversion will produce, from the frame's header and the options.
struct Preview {
  vistrel_layout layout;
  std::vector<std::string> warnings;     // for the user
  std::vector<double> gains = {};        // red, green, blue, if they were measured
  std::string command = {};              // that repeats what was decided; may be empty
  nlohmann::ordered_json settings = {};  // what was decided, for the report; null if nothing was
  std::string phase = {}, algorithm = {};
  uint32_t frameBits = 0;   // significant bits of the frame
  uint64_t frameBytes = 0;  // of its samples
};

// A job whose input has been opened: everything but the samples has been checked. All members throw
// ProgramError and Error.
class OpenJob {
 public:
  virtual ~OpenJob() = default;
  // Completes the preview, except for what needs the samples.
  virtual void describe() = 0;

  // Makes the job's frame and writes its picture, which the caller commits. Completes the preview.
  virtual std::unique_ptr<AtomicFile> run(Worker& worker) = 0;

  // For films: the input's frames, the largest number if that is unknown; whether there is a frame
  // n; its image; what the file may say about that.
  virtual uint64_t frames() const = 0;
  virtual bool has(uint64_t n) = 0;
  virtual const Image& make(uint64_t n, Worker& worker) = 0;
  virtual PictureDetails details() const = 0;
};

// How to carry out a job. Several threads call `open` at once, for different jobs. What is in the
// preview when a job fails is reported as well; it must outlive the open job.
struct BatchTask {
  std::function<std::unique_ptr<OpenJob>(const Job&, Preview&)> open;
  OptionNames names;
  std::string options;                         // see Provenance
  std::vector<std::filesystem::path> sources;  // files that all pictures depend on besides frames
};

enum class JobState { kNotBegun, kMade, kUpToDate, kPlanned, kFailed };

struct JobResult {
  JobState state = JobState::kNotBegun;
  Outcome outcome;
  Preview preview{};  // as far as it came
  double seconds = 0;
};

class Batch {
 public:
  Batch(BatchPlan plan, const BatchOptions& options, BatchTask task);

  // Runs all jobs. After a failure, starts no further job unless the options say so. Reports
  // failures in the order of the jobs.
  ExitStatus run();

  const std::vector<Job>& jobs() const { return plan_.jobs; }
  // Those about no frame.
  const std::vector<std::string>& warnings() const { return plan_.warnings; }
  const std::vector<JobResult>& results() const { return results_; }
  const ProgressStats& stats() const { return progress_->stats(); }

 private:
  std::set<std::filesystem::path> folders() const;
  bool runJob(size_t i, WorkerPool& workers);
  JobState doJob(const Job& job, JobResult& result, WorkerPool::Lease& worker);
  static void failed(JobResult& result);
  bool isUpToDate(const Job& job, const Provenance& provenance) const;
  void ended(size_t i);
  void report(size_t i);
  void printHints();
  ExitStatus status() const;

  BatchPlan plan_;
  BatchOptions options_;
  BatchTask task_;
  std::vector<JobResult> results_;
  std::unique_ptr<Manifest> manifest_;
  std::unique_ptr<Progress> progress_;
  std::vector<bool> ended_;
  size_t reported_ = 0;  // so many of the first results
};

// The threads that so many workers are: 0 is one per processor.
unsigned threadsFor(unsigned workers);

// Makes a folder for pictures unless it is there, and removes what killed runs left in it.
void prepareFolder(const std::filesystem::path& folder);

// "in.pgm -> out.png: 640x480, colour of 8 bits"
std::string planText(const std::string& input, const std::filesystem::path& to,
                     const vistrel_layout& layout);

// On standard output, unless that is for the picture.
void printCommand(Progress& progress, const std::filesystem::path& to, const std::string& command);

// Has an interrupt sum up the run so far.
void keepForInterrupts(const ProgressStats& stats, const BatchOptions& options);

// Prints what became of the batch, which has run, as JSON on standard output.
void printReport(const Batch& batch, ExitStatus status);

}  // namespace vistrel::app
