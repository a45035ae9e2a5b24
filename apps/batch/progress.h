// What is said on standard error while a batch runs.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "apps/batch/standing.h"

namespace vistrel::app {

enum class Show {
  kAuto,    // a bar on a terminal, for more than one frame
  kAlways,  // a bar
  kNever,
  kJson  // objects, one on a line
};

// "auto", "always", "never", "json"
Show parseShow(std::string_view word);

// For one thread at a time.
class Progress {
 public:
  explicit Progress(size_t total, Show show = Show::kAuto);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void made(uint64_t pixels = 0);  // one more frame, of so many pixels in its picture
  void passed();                   // one more frame, without a picture

  // A message that stays, above the bar.
  void say(std::string_view text);

 private:
  void draw();
  void clear() const;

  bool bar_, json_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  Standing standing_;
};

}  // namespace vistrel::app
