// Threads that share a list of tasks.
#pragma once

#include <cstddef>
#include <functional>

namespace vistrel::app {

// Tasks 0 to count - 1.
struct Tasks {
  size_t count;
  std::function<bool(size_t)> run;    // false stops further tasks from being started
  std::function<void(size_t)> ended;  // called for one task at a time, in the order of completion
};

// Starts tasks in order on up to `threads` threads, including the caller's; on fewer if the system
// grants no more. Returns when all started tasks have ended. If a function throws, starts no
// further task and rethrows the exception.
void runTasks(const Tasks& tasks, unsigned threads);

}  // namespace vistrel::app
