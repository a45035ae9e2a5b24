// How far a run has come, as a bar for people and as JSON for programs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vistrel::app {

struct ProgressStats {
  size_t total = 0;  // 0: unknown, since frames arrive
  size_t done = 0;
  size_t made = 0, failed = 0;  // of those done; the others were up to date
  uint64_t pixels = 0;          // in the pictures made
  uint64_t bytes = 0;           // of the samples that they were made from
  double seconds = 0;           // since the start

  size_t upToDate() const { return done - made - failed; }
  double framesPerSecond() const { return seconds > 0 ? static_cast<double>(made) / seconds : 0; }
  double megapixelsPerSecond() const {
    return seconds > 0 ? static_cast<double>(pixels) / seconds / 1e6 : 0;
  }
  double megabytesPerSecond() const {
    return seconds > 0 ? static_cast<double>(bytes) / seconds / 1e6 : 0;
  }
  // Seconds to the end at this rate; negative while the rate is unknown.
  double remaining() const {
    return made && total ? static_cast<double>(total - done) / framesPerSecond() : -1;
  }
};

// One line of at most `width` characters, without the newline: as much as fits, the count at least.
std::string barOf(const ProgressStats& stats, size_t width = 79);

// One object on one line, without the newline.
std::string jsonOf(const ProgressStats& stats);

// "7 made, 2 up to date, 1 failed, 3 left in 2.5 s: 2.8 frames/s, 12.0 MB/s"
std::string summaryOf(const ProgressStats& stats);

}  // namespace vistrel::app
