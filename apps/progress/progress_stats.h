// How far a run has come, as a bar for people and as JSON for programs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vistrel::app {

struct ProgressStats {
  size_t total = 0, done = 0;
  size_t made = 0;      // of those done; the others were up to date or failed
  uint64_t pixels = 0;  // in the pictures made
  double seconds = 0;   // since the start

  double framesPerSecond() const { return seconds > 0 ? static_cast<double>(made) / seconds : 0; }
  double megapixelsPerSecond() const {
    return seconds > 0 ? static_cast<double>(pixels) / seconds / 1e6 : 0;
  }
  // Seconds to the end at this rate; negative while the rate is unknown.
  double remaining() const {
    return made ? static_cast<double>(total - done) / framesPerSecond() : -1;
  }
};

// One line of less than 80 characters, without the newline.
std::string barOf(const ProgressStats& stats);

// One object on one line, without the newline.
std::string jsonOf(const ProgressStats& stats);

}  // namespace vistrel::app
