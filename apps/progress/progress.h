// Progress and messages on standard error.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "apps/options/batch_options.h"
#include "apps/progress/progress_stats.h"

namespace vistrel::app {

// Not thread-safe.
class Progress {
 public:
  explicit Progress(size_t total, ProgressMode mode = ProgressMode::kAuto);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void made(uint64_t pixels = 0);  // one more frame, with so many pixels in its picture
  void passed();                   // one more frame, without a picture

  // Prints a message, which stays above the bar.
  void say(std::string_view text);

  // Removes the bar until the next frame.
  void clear() const;

 private:
  void draw();

  bool bar_, json_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  ProgressStats stats_;
};

}  // namespace vistrel::app
