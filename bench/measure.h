// Times several jobs against each other: short repetitions of each, in random order, so that
// the machine's noise falls on all alike.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vistrel::core::bench {

struct Job {
  std::string name;
  std::function<void()> run;
};

struct Timing {
  double minimum, median;  // over the rounds, nanoseconds of one run on this thread
};

// Once, before the first measurement.
void prepareMeasuring();

std::vector<Timing> measure(const std::vector<Job>& jobs, int rounds);

// Whether all the work of one run is done by the calling thread, which is all that is timed: the
// process has no other one (a pool's idle worker could wake later), nor spends time outside it.
bool staysOnThisThread(const std::function<void()>& run);

}  // namespace vistrel::core::bench
