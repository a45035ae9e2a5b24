// Images made by several threads: the same bytes as by one.
#include <thread>

#include "tests/host/random_case.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

// A runner that starts a thread for each task.
int32_t runOnThreads(void*, uint32_t count, void (*task)(void*, uint32_t), void* data) {
  std::vector<std::thread> threads;
  for (uint32_t i = 0; i < count; ++i) threads.emplace_back(task, data, i);
  for (auto& thread : threads) thread.join();
  return 0;
}

int32_t runInTurn(void*, uint32_t count, void (*task)(void*, uint32_t), void* data) {
  for (uint32_t i = count; i > 0; --i) task(data, i - 1);
  return 0;
}

// Frames of several bands.
TEST(SharedImages, MakeTheSameImage) {
  const OwnTeam team(5);
  for (uint32_t seed = 0; seed < kCases / 3; ++seed) {
    RandomCase c(seed, 1500, 900);
    vistrel_conversion conversion = c.conversion;
    for (uint32_t threads = 1; threads <= 5; ++threads) {
      conversion.threads = threads;
      conversion.team = team;
      Canvas canvas(c);
      const auto image = canvas.image();
      ASSERT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK) << c.text();
      ASSERT_TRUE(canvas.holds()) << c.text() << ", threads " << threads;
    }
    conversion.team = nullptr;
    for (const auto run : {runOnThreads, runInTurn}) {
      conversion.run = run;
      Canvas canvas(c);
      const auto image = canvas.image();
      ASSERT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK) << c.text();
      ASSERT_TRUE(canvas.holds()) << c.text() << ", by a runner";
    }
  }
}

TEST(SharedImages, MayBeMoreThanProcessors) {
  const OwnTeam team(16);
  const RandomCase c(12, 2000, 1200);
  vistrel_conversion conversion = c.conversion;
  conversion.threads = 16;
  conversion.team = team;
  for (int round = 0; round < 50; ++round) {
    Canvas canvas(c);
    const auto image = canvas.image();
    ASSERT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK);
    ASSERT_TRUE(canvas.holds());
  }
}

using ThreadsOfAConversion = LargeFrame;

TEST_F(ThreadsOfAConversion, AreChecked) {
  const OwnTeam team(3);
  const auto expectThreads = [&](uint32_t threads, const std::string& reason) {
    conversion.threads = threads;
    expectError(rejection(),
                {VISTREL_BAD_THREADS, "conversion.threads", std::to_string(threads), reason});
  };
  expectThreads(2, "more than 1 needs a team, or a function that runs tasks");
  expectThreads(257, "at most 256 are allowed");
  conversion.team = team;
  expectThreads(4, "its team has 3 threads");
  conversion.run = runInTurn;
  expectThreads(2, "set team or run, not both");
  EXPECT_TRUE(isUntouched());
}

TEST_F(ThreadsOfAConversion, DoNotMatterToSmallFrames) {
  frame.height = 2;
  conversion.threads = 2;
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return -3; };
  EXPECT_EQ(rejection().status, VISTREL_OK);
}

TEST_F(ThreadsOfAConversion, MayNotFail) {
  conversion.threads = 2;
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return -3; };
  expectError(rejection(),
              {VISTREL_RUN_FAILED, "conversion.run", "", "it returned -3 instead of 0"});
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return 0; };
  expectError(rejection(),
              {VISTREL_RUN_FAILED, "conversion.run", "", "it returned before all tasks were done"});
}

}  // namespace
}  // namespace vistrel
