// How far a batch is, as a bar for people and as JSON for programs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vistrel::app {

struct Standing {
  size_t total = 0, done = 0;
  size_t made = 0;      // of those that are done; the others needed nothing or failed
  uint64_t pixels = 0;  // of those that were made
  double seconds = 0;   // since the start

  double framesPerSecond() const { return seconds > 0 ? static_cast<double>(made) / seconds : 0; }
  double megapixelsPerSecond() const {
    return seconds > 0 ? static_cast<double>(pixels) / seconds / 1e6 : 0;
  }
  // Until all are made at this rate; below 0 while there is no rate.
  double remaining() const {
    return made ? static_cast<double>(total - done) / framesPerSecond() : -1;
  }
};

// One line of less than 80 characters, without its end.
std::string barOf(const Standing& standing);

// One object on one line, without its end.
std::string jsonOf(const Standing& standing);

}  // namespace vistrel::app
