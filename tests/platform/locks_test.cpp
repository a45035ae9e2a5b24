// The critical sections.
#include <gtest/gtest.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "vistrel/platform.h"

namespace vistrel::core::test {
namespace {

class CriticalSection : public ::testing::Test {
 protected:
  CriticalSection() { OS_InitializeCriticalSection(&mutex_); }
  ~CriticalSection() override { OS_DeleteCriticalSection(&mutex_); }

  pthread_mutex_t mutex_;
};

TEST_F(CriticalSection, IsHeldFromEnterToLeave) {
  OS_EnterCriticalSection(&mutex_);
  EXPECT_EQ(pthread_mutex_trylock(&mutex_), EBUSY);
  OS_LeaveCriticalSection(&mutex_);
  EXPECT_EQ(pthread_mutex_trylock(&mutex_), 0);
  OS_LeaveCriticalSection(&mutex_);
}

TEST_F(CriticalSection, LetsOneThreadInAtATime) {
  constexpr int kThreads = 4, kTurns = 20000;
  long count = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i)
    threads.emplace_back([&] {
      for (int turn = 0; turn < kTurns; ++turn) {
        OS_EnterCriticalSection(&mutex_);
        ++count;
        OS_LeaveCriticalSection(&mutex_);
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, long{kThreads} * kTurns);
}

}  // namespace
}  // namespace vistrel::core::test
