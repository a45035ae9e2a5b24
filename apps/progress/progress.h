// Progress and messages on standard error.
#pragma once

#include <chrono>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "apps/options/batch_options.h"
#include "apps/progress/progress_stats.h"

namespace vistrel::app {

// Not thread-safe.
class Progress {
 public:
  // total: of frames; 0 if their number is unknown.
  explicit Progress(size_t total, const BatchOptions& options = {});
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // One more frame: with so many pixels in its picture and bytes of samples, or without a picture.
  void made(uint64_t pixels = 0, uint64_t bytes = 0);
  void failed();
  void passed();

  // Prints a message, which stays above the bar.
  void say(std::string_view text);

  // A remark about an input, or about the run if that is empty. Repeated ones are only counted.
  void note(const std::string& input, const std::string& text);

  // Says how often notes were repeated, and sums up the run.
  void finish(bool sumsUp);

  // Removes the bar until the next frame.
  void clear() const;

  const ProgressStats& stats() const { return stats_; }

 private:
  void draw();
  void count();  // the seconds

  bool quiet_, bar_, json_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  ProgressStats stats_;
  std::map<std::string, std::set<std::string>> notes_;  // and the inputs that they are about
};

}  // namespace vistrel::app
