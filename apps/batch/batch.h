// Runs the jobs of a batch and keeps what became of each.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "apps/batch/jobs.h"
#include "apps/batch/manifest.h"
#include "apps/batch/progress.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// Each has a stream of its own for as long as the batch runs.
constexpr unsigned kMostWorkers = VISTREL_MAX_STREAMS;

struct BatchOptions {
  unsigned workers = 1;  // 0: one for each processor
  bool keepGoing = false, dryRun = false, overwrite = false, json = false;
  std::string manifest;  // a file, or empty
  Show show = Show::kAuto;
};

// What a frame's header and the options lead to.
struct Prospect {
  vistrel_layout layout;
  std::vector<std::string> remarks;  // to the user
  std::vector<double> gains = {};    // red, green, blue, where they were measured
};

struct Made {
  Prospect prospect;
  uint32_t crc;  // of the pixels
};

// What a worker keeps from frame to frame: a stream, and memory for an image.
class Desk {
 public:
  // Until the next one. Throws Error.
  const Image& convert(const vistrel_frame& frame, const vistrel_conversion& conversion);

 private:
  std::optional<Stream> stream_;  // taken when it is needed first
  Image image_;
};

// What there is to do for a job. Any thread calls these, for several jobs at once; they throw
// Failure and Error.
struct Work {
  std::function<Prospect(const Job&)> check;  // all but the samples
  std::function<Made(const Job&, Desk&)> make;
  std::string options;                         // as in Origin
  std::vector<std::filesystem::path> sources;  // what all pictures depend on beside their frames
};

enum class State { kNotBegun, kMade, kUpToDate, kPlanned, kFailed };

struct Result {
  State state = State::kNotBegun;
  Outcome outcome;
  Prospect prospect{};  // of what was made or is planned
  double seconds = 0;
};

class Batch {
 public:
  Batch(Plan plan, const BatchOptions& options, Work work);

  // Does all jobs; after one that failed, none is begun unless the options say so. Tells of
  // failures in the order of the jobs.
  ExitStatus run();

  const std::vector<Job>& jobs() const { return plan_.jobs; }
  const std::vector<std::string>& remarks() const { return plan_.remarks; }
  const std::vector<Result>& results() const { return results_; }

 private:
  void removeAbandoned() const;
  bool runJob(size_t i, Desk& desk);
  State doJob(const Job& job, Result& result, Desk& desk);
  bool isUpToDate(const Job& job, const Origin& origin) const;
  void ended(size_t i);
  void tell(size_t i);
  void sumUp();
  ExitStatus status() const;

  Plan plan_;
  BatchOptions options_;
  Work work_;
  std::vector<Result> results_;
  std::unique_ptr<Manifest> manifest_;
  std::set<std::string> said_;  // of the remarks on the input that is told of
  std::unique_ptr<Progress> progress_;
  std::vector<bool> ended_;
  size_t told_ = 0;  // so many results, from the first one
};

}  // namespace vistrel::app
