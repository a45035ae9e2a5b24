// Teams whose threads do not start. This program's pthread_create replaces that of the C library.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>

#include "tests/host/rejection.h"

namespace {

std::atomic<int> g_live = 0;  // threads that have been started
std::atomic<int> g_startable = 1000;

}  // namespace

extern "C" {
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) {
  if (g_startable == 0) return EAGAIN;
  --g_startable, ++g_live;
  static const auto create =
      reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
  return create(thread, attributes, run, argument);
}
int pthread_join(pthread_t thread, void** result) {
  --g_live;
  static const auto join =
      reinterpret_cast<decltype(&pthread_join)>(dlsym(RTLD_NEXT, "pthread_join"));
  return join(thread, result);
}
}

namespace vistrel {
namespace {

TEST(TeamsThatDoNotStart, LeaveNoThread) {
  for (int startable = 0; startable < 4; ++startable) {
    vistrel_team* team = nullptr;
    vistrel_error error{};
    g_startable = startable;
    vistrel_team_create(5, &team, &error);
    expectError(error, {VISTREL_NO_THREAD, "threads", "5",
                        "the system started only " + std::to_string(startable) + " of 4 workers"});
    EXPECT_EQ(team, nullptr);
    EXPECT_EQ(g_live, 0);
  }
  g_startable = 4;
  vistrel_team* team = nullptr;
  ASSERT_EQ(vistrel_team_create(5, &team, nullptr), VISTREL_OK);
  EXPECT_EQ(g_live, 4);
  EXPECT_EQ(vistrel_team_destroy(team, nullptr), VISTREL_OK);
  EXPECT_EQ(g_live, 0);
  g_startable = 1000;
}

}  // namespace
}  // namespace vistrel
