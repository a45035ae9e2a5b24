// Processes that fork while they convert.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "tests/host/frames.h"
#include "tests/sanitizer.h"

namespace vistrel {
namespace {

#if VISTREL_SANITIZED
constexpr int kForks = 300;  // forks are slow under sanitizers
#else
constexpr int kForks = 10000;
#endif

bool convertsWell(uint8_t colour) {
  const std::vector<uint8_t> samples(12 * 10, colour);
  const vistrel_frame frame = frameOf(samples, 12, 10, VISTREL_GRBG);
  const auto image = tryConvert(frame, defaultConversion(frame));
  return image && image->pixels == Bytes(3 * 12 * 10, colour);
}

bool convertsWellOn(Stream& stream) {
  const std::vector<uint8_t> samples(12 * 10, 5);
  const vistrel_frame frame = frameOf(samples, 12, 10, VISTREL_GRBG);
  const auto image = stream.tryConvert(frame, defaultConversion(frame));
  return image && image->pixels.size() == 3 * 12 * 10 &&
         std::count(image->pixels.begin(), image->pixels.end(), 5) == 3 * 12 * 10;
}

// Runs `work` in a child and returns whether it was true there.
template <class Work>
bool inChild(Work work) {
  const pid_t child = fork();
  if (child == 0) _exit(work() ? 0 : 1);
  int status = -1;
  return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

// A thread that converts until the end of its scope.
class Worker {
 public:
  Worker() : thread_([this] { run(); }) {}
  ~Worker() {
    over_ = true;
    thread_.join();
    EXPECT_FALSE(failed_);
    EXPECT_GT(count_, 0);
  }

 private:
  void run() {
    while (!over_) {
      if (!convertsWell(static_cast<uint8_t>(++count_))) failed_ = true;
      std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
  }

  std::atomic<bool> over_ = false, failed_ = false;
  int count_ = 0;
  std::thread thread_;
};

TEST(Forks, LeaveParentAndChildConverting) {
  ASSERT_TRUE(convertsWell(1));
  const Worker worker;
  int failed = 0;
  for (int i = 0; i < kForks; ++i)
    failed += !inChild([i] { return i % 8 || convertsWell(static_cast<uint8_t>(i)); });
  EXPECT_EQ(failed, 0);
  EXPECT_TRUE(convertsWell(3));
}

// Streams of other threads are free there, idle and busy ones; the forking thread's own stay
// acquired, and so do those that it took over.
TEST(Forks, LeaveTheChildEveryStreamButItsOwn) {
  Stream mine = Stream::acquire(), takenOver, idle;
  std::thread([&] { takenOver = Stream::acquire(), idle = Stream::acquire(); }).join();
  ASSERT_TRUE(convertsWellOn(takenOver));
  const Worker worker;
  for (int i = 0; i < kForks / 100; ++i)
    EXPECT_TRUE(inChild([&] {
      if (!convertsWellOn(mine) || !convertsWellOn(takenOver) || convertsWellOn(idle)) return false;
      int acquired = 0;
      vistrel_stream* stream = nullptr;
      while (vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, nullptr) == VISTREL_OK) ++acquired;
      return acquired == VISTREL_MAX_STREAMS - 2;
    }));
}

TEST(Forks, LetTheChildConvertWhereOtherThreadsHeldAllStreams) {
  std::vector<Stream> all;
  std::thread([&all] {
    for (int i = 0; i < VISTREL_MAX_STREAMS; ++i) all.push_back(Stream::acquire());
  }).join();
  EXPECT_TRUE(inChild([] {
    return convertsWell(7) && Stream::tryAcquire(VISTREL_NO_WAIT) && Stream::tryAcquire();
  }));
  EXPECT_FALSE(Stream::tryAcquire(VISTREL_NO_WAIT));
}

// The child can end its parent's team, and have one of its own.
TEST(Forks, LeaveTheTeamToTheParent) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the thread sanitizer ends a child that starts threads";
#endif
  const std::vector<uint8_t> samples(800 * 600, 7);
  const vistrel_frame frame = frameOf(samples, 800, 600, VISTREL_GRBG);
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.threads = 2;
  vistrel_team* parents = nullptr;
  ASSERT_EQ(vistrel_team_create(2, &parents, nullptr), VISTREL_OK);
  const auto status = [&](vistrel_team* team) {
    conversion.team = team;
    const auto image = tryConvert(frame, conversion);
    return image ? VISTREL_OK : image.error().status();
  };
  EXPECT_EQ(status(parents), VISTREL_OK);
  EXPECT_TRUE(inChild([&] {
    vistrel_team* own = nullptr;
    return status(parents) == VISTREL_BAD_TEAM &&
           vistrel_team_destroy(parents, nullptr) == VISTREL_OK &&
           vistrel_team_create(2, &own, nullptr) == VISTREL_OK && status(own) == VISTREL_OK &&
           vistrel_team_destroy(own, nullptr) == VISTREL_OK;
  }));
  EXPECT_EQ(status(parents), VISTREL_OK);
  EXPECT_EQ(vistrel_team_destroy(parents, nullptr), VISTREL_OK);
}

// The waiting thread of the parent does not exist in the child; a released stream wakes its own.
TEST(Forks, LetTheChildWait) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the thread sanitizer ends a child that starts threads";
#endif
  std::vector<Stream> all;
  for (int i = 0; i < VISTREL_MAX_STREAMS; ++i) all.push_back(Stream::acquire());
  std::thread waiting([] { EXPECT_TRUE(Stream::tryAcquire()); });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_TRUE(inChild([&all] {
    std::thread childs([] {
      if (!Stream::tryAcquire()) _exit(2);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    all.pop_back();
    childs.join();
    return true;
  }));
  all.clear();
  waiting.join();
}

}  // namespace
}  // namespace vistrel
