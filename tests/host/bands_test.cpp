// Images made by several threads: the same bytes as by one.
#include <atomic>
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
TEST(Threads, MakeTheSameImage) {
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
      ASSERT_TRUE(canvas.holds(c.expected)) << c.text() << ", threads " << threads;
    }
    conversion.team = nullptr;
    for (const auto run : {runOnThreads, runInTurn}) {
      conversion.run = run;
      Canvas canvas(c);
      const auto image = canvas.image();
      ASSERT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK) << c.text();
      ASSERT_TRUE(canvas.holds(c.expected)) << c.text() << ", by a runner";
    }
  }
}

TEST(Threads, MayBeMoreThanProcessors) {
  const OwnTeam team(16);
  const RandomCase c(12, 2000, 1200);
  vistrel_conversion conversion = c.conversion;
  conversion.threads = 16;
  conversion.team = team;
  for (int round = 0; round < 50; ++round) {
    Canvas canvas(c);
    const auto image = canvas.image();
    ASSERT_EQ(vistrel_convert(&c.frame, &conversion, &image, nullptr), VISTREL_OK);
    ASSERT_TRUE(canvas.holds(c.expected));
  }
}

struct Excess : ::testing::Test {
  static constexpr uint32_t kWidth = 1000, kHeight = 700;
  std::vector<uint16_t> samples = std::vector<uint16_t>(kWidth * kHeight, 5);
  vistrel_frame frame = frameOf(samples, kWidth, kHeight, 12, VISTREL_GRBG);
  vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(kWidth * kHeight * 3, 77);
  vistrel_image image{pixels.data(), pixels.size(), 0};

  bool isUntouched() const {
    return std::count(pixels.begin(), pixels.end(), 77) == ptrdiff_t(pixels.size());
  }
};

TEST_F(Excess, IsReportedByPlaceWithTheImageUntouched) {
  const OwnTeam team(4);
  conversion.threads = 4, conversion.team = team;
  for (const uint32_t y : {699u, 650u, 300u, 299u, 7u, 0u})
    for (const uint32_t x : {999u, 40u}) {
      samples[y * kWidth + x] = 4096;
      vistrel_error error{};
      EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), VISTREL_EXCESS_SAMPLE);
      expectError(error, {VISTREL_EXCESS_SAMPLE, "frame.samples",
                          "4096 at column " + std::to_string(x) + ", row " + std::to_string(y),
                          "samples of 12 bits are at most 4095"});
      EXPECT_TRUE(isUntouched());
    }
}

struct Choices : Excess {
  vistrel_error rejection() {
    vistrel_error error{};
    vistrel_convert(&frame, &conversion, &image, &error);
    return error;
  }
};

TEST_F(Choices, OfThreadsAreChecked) {
  const OwnTeam team(3);
  const auto expectThreads = [&](uint32_t threads, const std::string& reason) {
    conversion.threads = threads;
    expectError(rejection(),
                {VISTREL_BAD_THREADS, "conversion.threads", std::to_string(threads), reason});
  };
  expectThreads(2, "more than 1 need a team, or a function that runs tasks");
  expectThreads(257, "at most 256 are allowed");
  conversion.team = team;
  expectThreads(4, "its team has 3");
  conversion.run = runInTurn;
  expectThreads(2, "they are either the team's or run's");
  EXPECT_TRUE(isUntouched());
}

TEST_F(Choices, OfTeamsAreChecked) {
  vistrel_error error{};
  for (const uint32_t threads : {0u, 1u, 257u}) {
    vistrel_team* none = nullptr;
    vistrel_team_create(threads, &none, &error);
    expectError(error,
                {VISTREL_BAD_THREADS, "threads", std::to_string(threads), "2 to 256 are allowed"});
    EXPECT_EQ(none, nullptr);
  }
  vistrel_team* team = nullptr;
  ASSERT_EQ(vistrel_team_create(2, &team, nullptr), VISTREL_OK);
  ASSERT_EQ(vistrel_team_destroy(team, nullptr), VISTREL_OK);
  const Rejection gone{VISTREL_BAD_TEAM, "team", "", "there is no such team"};
  vistrel_team_destroy(team, &error);
  expectError(error, gone);
  conversion.threads = 2, conversion.team = team;
  expectError(rejection(), {VISTREL_BAD_TEAM, "conversion.team", "", "there is no such team"});
  vistrel_team_create(2, nullptr, &error);
  expectError(error, nullPointer("team"));
  vistrel_team_destroy(nullptr, &error);
  expectError(error, nullPointer("team"));
}

TEST_F(Choices, OfThreadsDoNotMatterToSmallFrames) {
  frame.height = 2;
  conversion.threads = 2;
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return -3; };
  EXPECT_EQ(rejection().status, VISTREL_OK);
}

TEST_F(Choices, OfRunnersAreChecked) {
  conversion.threads = 2;
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return -3; };
  expectError(rejection(),
              {VISTREL_RUN_FAILED, "conversion.run", "", "it returned -3 instead of 0"});
  conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return 0; };
  expectError(rejection(),
              {VISTREL_RUN_FAILED, "conversion.run", "", "it returned before all tasks were done"});
}

TEST_F(Choices, ATeamServesOneConversionAtATime) {
  const OwnTeam team(2);
  conversion.threads = 2, conversion.team = team;
  std::atomic<bool> over = false;
  std::thread other([&] {
    std::vector<uint8_t> own(pixels.size());
    const vistrel_image ownImage{own.data(), own.size(), 0};
    while (!over) vistrel_convert(&frame, &conversion, &ownImage, nullptr);
  });
  vistrel_error error{};
  do error = rejection();
  while (error.status == VISTREL_OK);
  over = true;
  other.join();
  expectError(error, {VISTREL_BAD_TEAM, "conversion.team", "", "another conversion runs on it"});
  EXPECT_EQ(rejection().status, VISTREL_OK);
}

}  // namespace
}  // namespace vistrel
