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
#include "apps/options/batch_options.h"
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
};

// One thread's stream and image memory, which it keeps from frame to frame.
class Worker {
 public:
  // The image is valid until the next call. Throws Error.
  const Image& convert(const vistrel_frame& frame, const vistrel_conversion& conversion);

  // The last one.
  const Image& image() const { return image_; }

 private:
  Stream stream_;  // acquired on first use
  Image image_;
};

// How to carry out a job. Several threads call the functions at once, for different jobs. They
// throw ProgramError and Error; what is in the preview by then is reported as well.
struct BatchTask {
  std::function<void(const Job&, Preview&)> check;          // everything but the samples
  std::function<void(const Job&, Worker&, Preview&)> make;  // of the worker's image
  std::string options;                                      // see Provenance
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
  const std::vector<std::string>& warnings() const { return plan_.warnings; }
  const std::vector<JobResult>& results() const { return results_; }

 private:
  void removeStale() const;
  bool runJob(size_t i, Worker& worker);
  JobState doJob(const Job& job, JobResult& result, Worker& worker);
  bool isUpToDate(const Job& job, const Provenance& provenance) const;
  void ended(size_t i);
  void report(size_t i);
  void printCommand(const Job& job, const std::string& command);
  void printSummary();
  ExitStatus status() const;

  BatchPlan plan_;
  BatchOptions options_;
  BatchTask task_;
  std::vector<JobResult> results_;
  std::unique_ptr<Manifest> manifest_;
  std::set<std::string> shown_;  // warnings about the current input
  std::unique_ptr<Progress> progress_;
  std::vector<bool> ended_;
  size_t reported_ = 0;  // so many of the first results
};

// Prints what became of the batch as JSON on standard output.
void printReport(const Batch& batch, ExitStatus status, double seconds);

}  // namespace vistrel::app
