// Threads that share a list of tasks.
#pragma once

#include <cstddef>
#include <functional>

namespace vistrel::app {

// Tasks 0 to count - 1.
struct Tasks {
  size_t count;
  // On any thread, whose number, below that of the threads, comes second; false keeps further tasks
  // from being begun.
  std::function<bool(size_t, size_t)> run;
  std::function<void(size_t)> ended;  // for one task at a time, in the order in which they end
};

// Begins tasks in order on so many threads, the caller's among them; on fewer where the system
// gives no more. Returns when all that were begun have ended, or throws what one of the functions
// threw, which also keeps further tasks from being begun.
void runTasks(const Tasks& tasks, unsigned threads);

}  // namespace vistrel::app
