// What is timed without a peer: loops, options, sizes, threads, delays.
#pragma once

#include "bench/report.h"

namespace vistrel::core::bench {

struct Section {
  const char* name;  // the word that chooses it
  const char* about;
  const char* unit;
  bool hasLevels;  // is timed at each level
  void (*run)(Report& report, int rounds);
};

extern const Section kFloor, kSamples, kOptions, kSizes, kThreads, kDelay;

}  // namespace vistrel::core::bench
