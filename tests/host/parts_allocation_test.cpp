// What is not allocated, by any thread. This program's malloc replaces that of the C library.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

#include "tests/host/frames.h"

extern "C" {
void* __libc_malloc(size_t bytes);
void* __libc_memalign(size_t alignment, size_t bytes);
}

namespace {

std::atomic<int> g_allocations = 0;

}  // namespace

extern "C" {
void* malloc(size_t bytes) {
  ++g_allocations;
  return __libc_malloc(bytes);
}
void* aligned_alloc(size_t alignment, size_t bytes) {
  ++g_allocations;
  return __libc_memalign(alignment, bytes);
}
}

namespace vistrel {
namespace {

struct HeldStream : ::testing::TestWithParam<const vistrel_algorithm*> {
  static constexpr uint32_t kWidth = 640, kHeight = 480;
  std::vector<uint16_t> samples = std::vector<uint16_t>(kWidth * kHeight, 600);
  vistrel_frame frame = frameOf(samples, kWidth, kHeight, 10, VISTREL_BGGR);
  vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(kWidth * kHeight * 4);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_stream* stream = nullptr;
  const std::vector<uint16_t> dark = std::vector<uint16_t>(samples.size(), 20);
  const std::vector<vistrel_point> hot{{3, 0}, {639, 479}};
  const vistrel_calibration calibration = calibrationOf(dark, {}, hot);
  const uint16_t points[3] = {0, 40000, 65535};
  const vistrel_finish look = finishOf(points);

  HeldStream() {
    conversion.algorithm = GetParam()->code;
    conversion.format = VISTREL_RGBA32;
    conversion.edges = VISTREL_EDGES_PADDED;
    for (uint32_t& black : conversion.black) black = 3;
    EXPECT_EQ(vistrel_stream_acquire(VISTREL_WAIT, &stream, nullptr), VISTREL_OK);
  }
  ~HeldStream() override { vistrel_stream_release(stream, nullptr); }

  void finish() {
    setFinish(conversion, look);
    setCalibration(conversion, calibration);
  }

  void expectNothingMoreForATeam() {
    vistrel_team* team = nullptr;
    ASSERT_EQ(vistrel_team_create(3, &team, nullptr), VISTREL_OK);
    conversion.threads = 3, conversion.team = team;
    const auto work = [&] {
      return vistrel_stream_convert(stream, &frame, &conversion, &image, nullptr);
    };
    ASSERT_EQ(work(), VISTREL_OK);
    const int before = g_allocations;
    for (int i = 0; i < 10; ++i) EXPECT_EQ(work(), VISTREL_OK);
    EXPECT_EQ(g_allocations, before);
    EXPECT_EQ(vistrel_team_destroy(team, nullptr), VISTREL_OK);
  }

  void expectNothingMoreForPushedRows() {
    ASSERT_EQ(vistrel_stream_begin(stream, &frame, &conversion, &image, nullptr), VISTREL_OK);
    const int before = g_allocations;
    for (uint32_t y = 0; y < kHeight; ++y)
      EXPECT_EQ(
          vistrel_stream_push(stream, samples.data() + y * kWidth, kWidth * 2, 1, nullptr, nullptr),
          VISTREL_OK);
    EXPECT_EQ(g_allocations, before);
  }
};

TEST_P(HeldStream, NeedsNothingMoreForATeam) { expectNothingMoreForATeam(); }

TEST_P(HeldStream, NeedsNothingMoreForATeamThatFinishes) {
  finish();
  expectNothingMoreForATeam();
}

TEST_P(HeldStream, NeedsNothingMoreForATeamThatTurns) {
  conversion.orientation = VISTREL_TURNED_90;
  expectNothingMoreForATeam();
}

TEST_P(HeldStream, NeedsNothingMoreForPushedRows) { expectNothingMoreForPushedRows(); }

TEST_P(HeldStream, NeedsNothingMoreForPushedRowsThatAreFinished) {
  finish();
  expectNothingMoreForPushedRows();
}

// The memory that is promised, a thread.
TEST_P(HeldStream, NeedsAFewRows) {
  vistrel_layout layout{};
  for (conversion.threads = 0; conversion.threads < 4; ++conversion.threads) {
    conversion.run = [](void*, uint32_t, auto, void*) -> int32_t { return 0; };
    ASSERT_EQ(vistrel_get_layout(&frame, &conversion, &layout, nullptr), VISTREL_OK);
    const size_t rows = GetParam()->code == VISTREL_KIMMEL ? 256 : 64;
    EXPECT_LE(layout.working_bytes, std::max(conversion.threads, 1u) * rows * 6 * (kWidth + 128));
  }
}

std::vector<const vistrel_algorithm*> algorithms() {
  std::vector<const vistrel_algorithm*> all;
  while (const auto* next = vistrel_algorithm_at(all.size())) all.push_back(next);
  return all;
}

INSTANTIATE_TEST_SUITE_P(Every, HeldStream, ::testing::ValuesIn(algorithms()),
                         [](const auto& test) { return std::string(test.param->name); });

}  // namespace
}  // namespace vistrel
