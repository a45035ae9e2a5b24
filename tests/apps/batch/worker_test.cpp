#include "apps/batch/worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>

namespace vistrel::app {
namespace {

TEST(WorkerPool, LendsEachWorkerToOneThread) {
  WorkerPool pool(3);
  std::mutex mutex;
  std::set<Worker*> lent, all;
  std::atomic<int> clashes = 0;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
      threads.emplace_back([&] {
        for (int k = 0; k < 200; ++k) {
          WorkerPool::Lease worker(pool);
          {
            const std::lock_guard lock(mutex);
            if (!lent.insert(&*worker).second) ++clashes;
            all.insert(&*worker);
          }
          std::this_thread::yield();
          const std::lock_guard lock(mutex);
          lent.erase(&*worker);
        }
      });
  }
  EXPECT_EQ(clashes, 0);
  EXPECT_LE(all.size(), 3u);
}

// A second lease of the only worker would wait for ever.
TEST(WorkerPool, TakesWorkersBackEarly) {
  WorkerPool pool(1);
  WorkerPool::Lease first(pool);
  Worker* const worker = &*first;
  first.release();
  first.release();
  WorkerPool::Lease second(pool);
  EXPECT_EQ(&*second, worker);
}

TEST(Worker, ConvertsWithAnyNumberOfThreads) {
  std::vector<uint8_t> samples;
  for (int i = 0; i < 96 * 80; ++i) samples.push_back(static_cast<uint8_t>(i * i * 7));
  const vistrel_frame frame = frameOf(Span<const uint8_t>(samples), 96, 80, VISTREL_RGGB);
  const vistrel_conversion conversion = defaultConversion(frame);
  Worker one, three(3);
  const Image expected = convert(frame, conversion);
  EXPECT_EQ(one.convert(frame, conversion).pixels, expected.pixels);
  EXPECT_EQ(three.convert(frame, conversion).pixels, expected.pixels);
}

}  // namespace
}  // namespace vistrel::app
