#include "apps/batch/run_tasks.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace vistrel {
namespace {

TEST(RunTasks, RunsAndReportsEveryTaskOnce) {
  for (const unsigned threads : {1u, 3u, 100u}) {
    std::vector<std::atomic<int>> run(50);
    std::multiset<size_t> ended;
    app::runTasks(
        {run.size(), [&](size_t i) { return ++run[i] > 0; }, [&](size_t i) { ended.insert(i); }},
        threads);
    for (size_t i = 0; i < run.size(); ++i) {
      EXPECT_EQ(run[i], 1);
      EXPECT_EQ(ended.count(i), 1u);
    }
  }
}

TEST(RunTasks, UsesAllThreads) {
  constexpr size_t kThreads = 4;
  std::mutex mutex;
  std::set<std::thread::id> threads;
  app::runTasks({40,
                 [&](size_t) {
                   // None continues before all have started.
                   for (size_t n = 0; n < kThreads; std::this_thread::yield()) {
                     const std::lock_guard lock(mutex);
                     threads.insert(std::this_thread::get_id());
                     n = threads.size();
                   }
                   return true;
                 },
                 [](size_t) {}},
                kThreads);
  EXPECT_EQ(threads.size(), kThreads);
}

TEST(RunTasks, StartsNoMoreAfterAFailure) {
  std::atomic<size_t> last = 0;
  app::runTasks({1000,
                 [&](size_t i) {
                   size_t seen = last;
                   while (seen < i && !last.compare_exchange_weak(seen, i)) continue;
                   return i != 5;
                 },
                 [](size_t) {}},
                1);
  EXPECT_EQ(last, 5u);
}

TEST(RunTasks, RethrowsExceptions) {
  for (const unsigned threads : {1u, 4u})
    EXPECT_THROW(app::runTasks({8,
                                [](size_t i) -> bool {
                                  if (i == 3) throw std::runtime_error("three");
                                  return true;
                                },
                                [](size_t) {}},
                               threads),
                 std::runtime_error);
}

}  // namespace
}  // namespace vistrel
