// The memory that conversions take, for everything that one can ask for, of a frame with many more
// rows than an engine needs.
#include <gtest/gtest.h>

#include "tests/host/frames.h"
#include "tests/host/watched_malloc.h"

namespace vistrel {
namespace {

// phase: of all but mono frames.
struct FrameKind {
  const char* name;
  uint32_t bytes, bits, packing, phase;
};
constexpr FrameKind kFrameKinds[] = {
    {"bytes", 1, 8, 0, VISTREL_GBRG},
    {"words", 2, 10, 0, VISTREL_GBRG},
    {"packed", 2, 10, VISTREL_PACKING_PFNC, VISTREL_GBRG},
    {"finished", 2, 10, 0, VISTREL_BGR},
};

struct WorkingMemory : ::testing::TestWithParam<uint32_t> {
  static constexpr uint32_t kWidth = 24, kHeight = 800, kBandsHeight = 10000;
  static constexpr size_t kBound = 64 * 6 * (kWidth + 128);
  static constexpr long kRoundedUp = 64;  // by malloc
  const std::vector<uint16_t> samples = samplesOf<uint16_t>(
      3 * kWidth, kBandsHeight, [](auto x, auto y) { return (x * 37 + y * 11) % 256; });
  const std::vector<uint16_t> table = std::vector<uint16_t>(1024, 7);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(8 * kWidth * kBandsHeight);
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  std::vector<vistrel_stream*> streams = std::vector<vistrel_stream*>(VISTREL_MAX_STREAMS);

  WorkingMemory() {
    for (auto& s : streams) vistrel_stream_acquire(VISTREL_WAIT, &s, nullptr);
  }
  ~WorkingMemory() override {
    for (auto* s : streams) vistrel_stream_release(s, nullptr);
  }

  static size_t bound() { return GetParam() == VISTREL_KIMMEL ? 4 * kBound : kBound; }

  // Watches a call that must succeed.
  template <class Work>
  static Watch watched(Work work) {
    g_watch = {.on = true};
    const int32_t status = work();
    const Watch seen = g_watch;
    g_watch = {};
    EXPECT_EQ(status, VISTREL_OK);
    return seen;
  }

  // All streams are in use, so the call takes its memory and frees it.
  void expectTaken(const vistrel_frame& frame, const vistrel_conversion& c, size_t bytes) const {
    const Watch seen = watched([&] { return vistrel_convert(&frame, &c, &image, nullptr); });
    EXPECT_GE(seen.peak, static_cast<long>(bytes));
    EXPECT_LE(seen.peak, static_cast<long>(bytes) + kRoundedUp);
    EXPECT_EQ(seen.bytes, 0);
    EXPECT_LE(seen.calls, 1);
  }

  // The second conversion on a stream takes none.
  void expectKept(const vistrel_frame& frame, const vistrel_conversion& c) const {
    const auto work = [&] {
      return vistrel_stream_convert(streams[0], &frame, &c, &image, nullptr);
    };
    EXPECT_EQ(work(), VISTREL_OK);
    EXPECT_EQ(watched(work).calls, 0);
  }

  // check(frame, conversion, layout) for each that is accepted, of a frame of so many rows.
  // every: takes only one of so many combinations.
  template <class Check>
  void forEach(uint32_t height, uint32_t every, const Check& check) const {
    for (const FrameKind& kind : kFrameKinds)
      for (size_t i = 0; const vistrel_format* format = vistrel_format_at(i); ++i) {
        if (kind.phase == VISTREL_BGR && (format->mono || GetParam() != VISTREL_BILINEAR)) continue;
        vistrel_frame frame{};
        frame.samples = samples.data(), frame.size = 2 * samples.size();
        frame.width = kWidth, frame.height = height;
        frame.bytes_per_sample = kind.bytes, frame.bits = kind.bits, frame.packing = kind.packing;
        frame.phase = format->mono ? uint32_t{VISTREL_MONO} : kind.phase;
        for (uint32_t chosen = 0; chosen < 128; chosen += every) {
          const vistrel_conversion c = conversionOf(frame, *format, chosen);
          vistrel_layout layout{};
          if (isLeftOut(*format, c)) continue;
          if (vistrel_get_layout(&frame, &c, &layout, nullptr) != VISTREL_OK) continue;
          check(frame, c, layout);
          ASSERT_FALSE(HasFailure())
              << kind.name << ", format " << format->name << ", chosen " << chosen;
        }
      }
  }

  // A combination for each number below 128.
  vistrel_conversion conversionOf(const vistrel_frame& frame, const vistrel_format& format,
                                  uint32_t chosen) const {
    vistrel_conversion c = defaultConversion(frame);
    c.excess = VISTREL_MASK;
    c.format = format.code, c.algorithm = GetParam();
    c.binning = 1 + chosen % 4;
    c.edges = chosen & 4 ? VISTREL_EDGES_PADDED : VISTREL_EDGES_NATIVE;
    c.gray = chosen & 8 ? VISTREL_RAW_GRAY : VISTREL_LUMA;
    setBlack(c, chosen & 16 ? 5 : 0);
    if (chosen & 32 && frame.phase < VISTREL_MONO) c.white_balance = VISTREL_BALANCE_GAINS;
    for (uint32_t& gain : c.gains) gain = 5000;
    if (chosen & 64) setTable(c, table);
    return c;
  }

  static const vistrel_format* formatOf(uint32_t code) {
    size_t i = 0;
    while (vistrel_format_at(i)->code != code) ++i;
    return vistrel_format_at(i);
  }

  // Binned raw gray takes a whole image; gray of other formats is not read.
  static bool isLeftOut(const vistrel_format& format, const vistrel_conversion& c) {
    const bool isGray = !format.mono && format.channels == 1;
    return c.gray == VISTREL_RAW_GRAY && (!isGray || c.binning > 1);
  }
};

TEST_P(WorkingMemory, IsAFewRows) {
  uint32_t count = 0;
  forEach(kHeight, 1, [&](const auto& frame, const auto& c, const auto& layout) {
    EXPECT_LE(layout.working_bytes, bound());
    if (++count % 3 == 0) expectTaken(frame, c, layout.working_bytes);
  });
  EXPECT_GT(count, 1500u);
}

// They run one after the other, on this thread. The frame has several bands.
TEST_P(WorkingMemory, IsAFewRowsAThread) {
  uint32_t most = 0;
  forEach(kBandsHeight, 21, [&](const auto& frame, vistrel_conversion c, const auto& one) {
    const auto runner = [&](uint32_t count, auto task) {
      for (uint32_t i = 0; i < count; ++i) task(i);
      most = std::max(most, count);
    };
    setRunner(c, 3, runner);
    const size_t bytes = layoutOf(frame, c).working_bytes;
    EXPECT_LE(bytes, 3 * bound());
    EXPECT_EQ(bytes % one.working_bytes, 0u);
    expectTaken(frame, c, bytes);
  });
  EXPECT_EQ(most, 3u);
}

// A frame that is pushed takes up to ten rows of samples and 4 KiB more, once.
TEST_P(WorkingMemory, IsLittleMoreForPushedRows) {
  uint32_t count = 0;
  forEach(kHeight, 1, [&](const auto& frame, const auto& c, const auto& layout) {
    const auto work = [&] { return vistrel_stream_begin(streams[0], &frame, &c, &image, nullptr); };
    vistrel_stream_trim(streams[0], nullptr);
    const Watch first = watched(work);
    const size_t samplesOfRow = (frame.phase == VISTREL_BGR ? 3 : 1) * (kWidth + 2 * 12);
    const size_t more = 10 * samplesOfRow * frame.bytes_per_sample + 4096;
    EXPECT_EQ(first.calls, 1);
    EXPECT_LE(first.peak, static_cast<long>(layout.working_bytes + more) + kRoundedUp);
    EXPECT_LE(first.peak, static_cast<long>(bound()));
    vistrel_stream_abort(streams[0], nullptr);
    EXPECT_EQ(watched(work).calls, 0);
    vistrel_stream_abort(streams[0], nullptr);
    ++count;
  });
  EXPECT_GT(count, 500u);
}

// Binned raw gray: a buffer of the whole frame, in one piece.
TEST_P(WorkingMemory, OfWholeFramesIsReported) {
  uint32_t count = 0;
  for (const FrameKind& kind : kFrameKinds)
    for (const uint32_t format : {VISTREL_GRAY8, VISTREL_GRAY16})
      for (uint32_t chosen = 0; chosen < 128; ++chosen) {
        vistrel_frame frame{};
        frame.samples = samples.data(), frame.size = 2 * samples.size();
        frame.width = kWidth, frame.height = 200;
        frame.bytes_per_sample = kind.bytes, frame.bits = kind.bits, frame.packing = kind.packing;
        frame.phase = kind.phase;
        const vistrel_conversion c = conversionOf(frame, *formatOf(format), chosen);
        vistrel_layout layout{};
        if (c.gray != VISTREL_RAW_GRAY || c.binning == 1) continue;
        if (vistrel_get_layout(&frame, &c, &layout, nullptr) != VISTREL_OK) continue;
        EXPECT_GE(layout.working_bytes, 3 * size_t{frame.width} * frame.height);
        expectTaken(frame, c, layout.working_bytes);
        ++count;
      }
  const bool isRejected = GetParam() == VISTREL_EDGE || GetParam() == VISTREL_NEAR ||
                          GetParam() == VISTREL_AHD || GetParam() == VISTREL_DIRECTIONAL;
  EXPECT_EQ(count > 0, !isRejected);
}

TEST_P(WorkingMemory, StaysWithTheStream) {
  forEach(40, 1, [&](const auto& frame, const auto& c, const auto&) { expectKept(frame, c); });
}

// A table of one sample for each value of 16 bits.
TEST_P(WorkingMemory, HasATableMoreForFinishedPixels) {
  const uint16_t points[] = {0, 40000, 65535};
  vistrel_finish finish = finishOf(points);
  finish.highlights = VISTREL_HIGHLIGHTS_NEUTRAL;
  uint32_t count = 0;
  forEach(kHeight, 5, [&](const auto& frame, vistrel_conversion c, const auto&) {
    if (c.gray == VISTREL_RAW_GRAY || c.reduction || frame.phase == VISTREL_BGR) return;
    setFinish(c, finish);
    const size_t bytes = layoutOf(frame, c).working_bytes;
    EXPECT_LE(bytes, bound() + 65536 * formatOf(c.format)->bytes_per_sample);
    expectTaken(frame, c, bytes);
    expectKept(frame, c);
    ++count;
  });
  EXPECT_GT(count, 50u);
}

// Turned rows are as long as the frame is high.
TEST_P(WorkingMemory, HasTheUprightImageMoreForATurnedOne) {
  uint32_t count = 0;
  forEach(kHeight, 5, [&](const auto& frame, vistrel_conversion c, const auto&) {
    if (c.gray == VISTREL_RAW_GRAY) return;
    c.orientation = VISTREL_TURNED_90;
    const vistrel_layout layout = layoutOf(frame, c);
    const vistrel_format& format = *formatOf(c.format);
    const size_t upright =
        size_t{layout.width} * layout.height * (format.mono ? 1 : 3) * format.bytes_per_sample;
    EXPECT_GE(layout.working_bytes, upright);
    EXPECT_LE(layout.working_bytes, upright + bound() / (kWidth + 128) * (kHeight + 128));
    expectTaken(frame, c, layout.working_bytes);
    expectKept(frame, c);
    ++count;
  });
  EXPECT_GT(count, 50u);
}

TEST_P(WorkingMemory, IsFreedByATrim) {
  forEach(40, 5, [&](const auto& frame, const auto& c, const auto& layout) {
    vistrel_stream_trim(streams[0], nullptr);
    const Watch seen = watched([&] {
      const int32_t status = vistrel_stream_convert(streams[0], &frame, &c, &image, nullptr);
      vistrel_stream_trim(streams[0], nullptr);
      return status;
    });
    EXPECT_EQ(seen.calls, layout.working_bytes ? 1 : 0);
    EXPECT_EQ(seen.bytes, 0);
  });
}

std::vector<uint32_t> algorithmCodes() {
  std::vector<uint32_t> codes;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    codes.push_back(a->code);
  return codes;
}
INSTANTIATE_TEST_SUITE_P(Every, WorkingMemory, ::testing::ValuesIn(algorithmCodes()),
                         [](const auto& test) { return vistrel_algorithm_at(test.index)->name; });

}  // namespace
}  // namespace vistrel
