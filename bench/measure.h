// Times several jobs against each other: short repetitions in random order, so that the machine's
// noise affects all of them alike.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vistrel::core::bench {

struct Job {
  std::string name;
  std::function<void()> run;
  std::function<void()> prepare = {};  // before each run; not timed
};

struct Timing {
  double minimum, median;  // over all rounds; nanoseconds per run
};

// What counts: what this thread computes, or what passes until it has.
enum class Clock { thread, wall };

// Call it once, before the first measurement.
void prepareMeasuring();

std::vector<Timing> measure(const std::vector<Job>& jobs, int rounds, Clock clock = Clock::thread);

// Whether the calling thread does all the work of one run; only this thread is timed. The process
// must have no other thread (an idle worker of a pool could wake up later) and spend no time
// elsewhere.
bool staysOnThisThread(const std::function<void()>& run);

}  // namespace vistrel::core::bench
