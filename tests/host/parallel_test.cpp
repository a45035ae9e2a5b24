// Many threads at once: on streams of their own, with one team, on one stream in turns. For the
// thread sanitizer above all.
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

#include "tests/host/random_case.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

#if VISTREL_SANITIZED
constexpr uint32_t kFramesAThread = 6;
#else
constexpr uint32_t kFramesAThread = 60;
#endif

// Calls work(0) to work(count - 1), each on a thread of its own.
template <class Work>
void onThreads(uint32_t count, const Work& work) {
  std::vector<std::thread> threads;
  for (uint32_t i = 0; i < count; ++i) threads.emplace_back([&work, i] { work(i); });
  for (std::thread& thread : threads) thread.join();
}

// A frame of several bands.
std::unique_ptr<RandomCase> largeCase(uint32_t seed) {
  for (;; ++seed) {
    auto c = std::make_unique<RandomCase>(seed, 900, 700);
    if (uint64_t{c->layout.width} * c->layout.height > 200'000) return c;
  }
}

// A conversion of pushed rows, row by row.
class Pushing {
 public:
  Pushing(vistrel_stream* stream, const RandomCase& randomCase)
      : stream_(stream), c_(randomCase), canvas_(c_) {
    const vistrel_image image = canvas_.image();
    isGood_ =
        vistrel_stream_begin(stream_, &c_.frame, &c_.conversion, &image, nullptr) == VISTREL_OK;
  }

  // Returns false after the last row.
  bool pushRow() {
    const size_t bytes = rowBytesOf(c_.frame);
    const size_t stride = c_.frame.stride ? c_.frame.stride : bytes;
    const uint8_t* const row = c_.samples.data() + y_ * stride;
    isGood_ =
        isGood_ && vistrel_stream_push(stream_, row, bytes, 1, nullptr, nullptr) == VISTREL_OK;
    return ++y_ < c_.frame.height;
  }

  bool madeTheImage() const { return isGood_ && canvas_.holds(); }

 private:
  vistrel_stream* stream_;
  const RandomCase& c_;
  Canvas canvas_;
  uint32_t y_ = 0;
  bool isGood_;
};

TEST(ParallelThreads, ConvertOnStreamsOfTheirOwn) {
  std::atomic<uint32_t> wrong = 0;
  onThreads(16, [&](uint32_t thread) {
    const OwnStream stream;
    for (uint32_t i = 0; i < kFramesAThread; ++i) {
      const RandomCase c(1000 * thread + i, 40, 30);
      Canvas canvas(c);
      const vistrel_image image = canvas.image();
      wrong +=
          vistrel_stream_convert(stream, &c.frame, &c.conversion, &image, nullptr) != VISTREL_OK;
      wrong += !canvas.holds();
    }
  });
  EXPECT_EQ(wrong, 0u);
}

TEST(ParallelThreads, PushRowsToStreamsOfTheirOwn) {
  std::atomic<uint32_t> wrong = 0, pushed = 0;
  onThreads(16, [&](uint32_t thread) {
    const OwnStream stream;
    for (uint32_t i = 0; i < kFramesAThread; ++i) {
      const RandomCase c(2000 * thread + i, 40, 30);
      if (!c.isPushable()) continue;
      Pushing pushing(stream, c);
      while (pushing.pushRow()) std::this_thread::yield();
      wrong += !pushing.madeTheImage();
      ++pushed;
    }
  });
  EXPECT_EQ(wrong, 0u);
  EXPECT_GT(pushed, 16u);
}

// Rows of four frames, one of each in turn.
TEST(ParallelThreads, PushRowsToSeveralStreamsInTurn) {
  std::atomic<uint32_t> wrong = 0;
  onThreads(4, [&](uint32_t thread) {
    std::vector<std::unique_ptr<RandomCase>> cases;
    for (uint32_t seed = 100 * thread; cases.size() < 4; ++seed) {
      cases.push_back(std::make_unique<RandomCase>(seed));
      if (!cases.back()->isPushable()) cases.pop_back();
    }
    const OwnStream streams[4];
    std::vector<std::unique_ptr<Pushing>> all;
    for (size_t i = 0; i < 4; ++i) all.push_back(std::make_unique<Pushing>(streams[i], *cases[i]));
    std::vector<Pushing*> unfinished;
    for (const auto& pushing : all) unfinished.push_back(pushing.get());
    while (!unfinished.empty())
      unfinished.erase(std::remove_if(unfinished.begin(), unfinished.end(),
                                      [](Pushing* pushing) { return !pushing->pushRow(); }),
                       unfinished.end());
    for (const auto& pushing : all) wrong += !pushing->madeTheImage();
  });
  EXPECT_EQ(wrong, 0u);
}

// Only the caller's lock keeps them apart.
TEST(ParallelThreads, PushRowsToOneStreamInTurn) {
  uint32_t seed = 0;
  while (!RandomCase(seed).isPushable()) ++seed;
  const RandomCase c(seed);
  const OwnStream stream;
  Pushing pushing(stream, c);
  std::mutex mutex;
  bool isOver = false;
  onThreads(8, [&](uint32_t) {
    for (;;) {
      const std::lock_guard lock(mutex);
      if (isOver) return;
      isOver = !pushing.pushRow();
    }
  });
  EXPECT_TRUE(pushing.madeTheImage());
}

// Frames of several bands. Whoever finds the team at work tries again.
TEST(ParallelThreads, ShareATeamInTurns) {
  const OwnTeam team(3);
  std::atomic<uint32_t> wrong = 0;
  onThreads(4, [&](uint32_t thread) {
    const auto large = largeCase(100 * thread);
    const RandomCase& c = *large;
    vistrel_conversion conversion = c.conversion;
    conversion.threads = 3, conversion.team = team;
    for (uint32_t i = 0; i < kFramesAThread / 2; ++i) {
      Canvas canvas(c);
      const vistrel_image image = canvas.image();
      int32_t status;
      while ((status = vistrel_convert(&c.frame, &conversion, &image, nullptr)) == VISTREL_BAD_TEAM)
        std::this_thread::yield();
      wrong += status != VISTREL_OK || !canvas.holds();
    }
  });
  EXPECT_EQ(wrong, 0u);
}

TEST(ParallelThreads, HaveTeamsOfTheirOwn) {
  std::atomic<uint32_t> wrong = 0;
  onThreads(8, [&](uint32_t thread) {
    const auto large = largeCase(100 * thread);
    const RandomCase& c = *large;
    for (uint32_t i = 0; i < kFramesAThread / 6; ++i) {
      const OwnTeam team(2);
      vistrel_conversion conversion = c.conversion;
      conversion.threads = 2, conversion.team = team;
      Canvas canvas(c);
      const vistrel_image image = canvas.image();
      wrong += vistrel_convert(&c.frame, &conversion, &image, nullptr) != VISTREL_OK;
      wrong += !canvas.holds();
    }
  });
  EXPECT_EQ(wrong, 0u);
}

// The child starts no thread, so that sanitizers let it live.
TEST(TeamOfAParent, IsRejectedInItsChildWithAText) {
  const OwnTeam team(2);
  const RandomCase c(3, 400, 300);
  vistrel_conversion conversion = c.conversion;
  conversion.threads = 2, conversion.team = team;
  Canvas canvas(c);
  const vistrel_image image = canvas.image();
  ASSERT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK);
  const pid_t child = fork();
  if (child == 0) {
    vistrel_error error{};
    vistrel_convert(&c.frame, &conversion, &image, &error);
    expectError(error, {VISTREL_BAD_TEAM, "conversion.team", "",
                        "it belongs to the parent process; its workers are not in the child"});
    EXPECT_EQ(vistrel_team_destroy(team, nullptr), VISTREL_OK);
    conversion.threads = 0, conversion.team = nullptr;
    Canvas own(c);
    const vistrel_image to = own.image();
    EXPECT_EQ(vistrel_convert(&c.frame, &conversion, &to, nullptr), VISTREL_OK);
    EXPECT_TRUE(own.holds());
    _exit(testing::Test::HasFailure());
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK);
  EXPECT_TRUE(canvas.holds());
}

}  // namespace
}  // namespace vistrel
