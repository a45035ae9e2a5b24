#include "apps/batch/run_tasks.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace vistrel::app {
namespace {

// What the threads share.
class SharedTasks {
 public:
  explicit SharedTasks(const Tasks& tasks) : tasks_(tasks) {}

  void work() {
    try {
      for (size_t task; !stopped_ && (task = next_++) < tasks_.count;) {
        if (!tasks_.run(task)) stopped_ = true;
        const std::lock_guard lock(ending_);
        tasks_.ended(task);
      }
    } catch (...) {
      const std::lock_guard lock(ending_);
      stopped_ = true;
      if (!thrown_) thrown_ = std::current_exception();
    }
  }

  void rethrow() const {
    if (thrown_) std::rethrow_exception(thrown_);
  }

 private:
  const Tasks& tasks_;
  std::atomic<size_t> next_ = 0;
  std::atomic<bool> stopped_ = false;
  std::mutex ending_;
  std::exception_ptr thrown_;
};

}  // namespace

void runTasks(const Tasks& tasks, unsigned threads) {
  SharedTasks shared(tasks);
  {
    std::vector<std::jthread> others;
    try {
      for (size_t i = 1; i < threads && i < tasks.count; ++i)
        others.emplace_back([&shared] { shared.work(); });
    } catch (const std::exception&) {
      // No memory or no thread left: the existing threads do all the work.
    }
    shared.work();
  }
  shared.rethrow();
}

}  // namespace vistrel::app
