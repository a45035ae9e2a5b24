// The critical sections.
#include <gtest/gtest.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "platform/platform.h"

namespace vistrel::test {
namespace {

class CriticalSection : public ::testing::Test {
 protected:
  CriticalSection() { OS_InitializeCriticalSection(&m_mutex); }
  ~CriticalSection() override { OS_DeleteCriticalSection(&m_mutex); }

  pthread_mutex_t m_mutex;
};

TEST_F(CriticalSection, IsHeldFromEnterToLeave) {
  OS_EnterCriticalSection(&m_mutex);
  EXPECT_EQ(pthread_mutex_trylock(&m_mutex), EBUSY);
  OS_LeaveCriticalSection(&m_mutex);
  EXPECT_EQ(pthread_mutex_trylock(&m_mutex), 0);
  OS_LeaveCriticalSection(&m_mutex);
}

TEST_F(CriticalSection, LetsOneThreadInAtATime) {
  constexpr int kThreads = 4, kTurns = 20000;
  long count = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i)
    threads.emplace_back([&] {
      for (int turn = 0; turn < kTurns; ++turn) {
        OS_EnterCriticalSection(&m_mutex);
        ++count;
        OS_LeaveCriticalSection(&m_mutex);
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, long{kThreads} * kTurns);
}

}  // namespace
}  // namespace vistrel::test
