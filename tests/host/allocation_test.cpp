// The n-th allocation fails, for every n: the call reports it, nothing leaks, and the next call
// works.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"
#include "tests/host/watched_malloc.h"

namespace vistrel {
namespace {

// Fails each allocation of the work in turn, alone or with all that follow, and checks after each.
// Returns how many there are.
template <class Work, class Check>
int failEach(const Work& work, bool fromThenOn, const Check& check, int failedErrno = ENOMEM) {
  for (int n = 1;; ++n) {
    vistrel_error error{};
    g_watch = {.on = true, .fromThenOn = fromThenOn, .failAt = n, .failedErrno = failedErrno};
    const int32_t status = work(&error);
    const Watch seen = g_watch;
    g_watch = {};
    if (!seen.failed) return n - 1;
    EXPECT_EQ(status, VISTREL_NO_MEMORY) << "allocation " << n;
    expectError(error, {VISTREL_NO_MEMORY, "", "", "out of memory"});
    check();
    if (testing::Test::HasFailure()) return n;
  }
}

struct Case {
  const char* name;
  uint32_t bits, phase;
  void (*choose)(vistrel_conversion&);
};

const std::vector<uint16_t> g_table(1024, 9), g_flat(40 * 31, 5000);
const std::vector<vistrel_point> g_hot{{3, 4}};
const vistrel_calibration g_calibration = calibrationOf({}, g_flat, g_hot);
const vistrel_finish g_finish = finishOf(g_table);
constexpr vistrel_region kRegion{3, 2, 30, 25};

const Case kCases[] = {
    {"Mono", 12, VISTREL_MONO, [](vistrel_conversion& c) { c.region = kRegion; }},
    {"Bilinear", 12, VISTREL_RGGB, [](vistrel_conversion&) {}},
    {"AhdRegion", 14, VISTREL_GRBG,
     [](vistrel_conversion& c) { c.algorithm = VISTREL_AHD, c.region = kRegion; }},
    {"Near", 10, VISTREL_GRBG, [](vistrel_conversion& c) { c.algorithm = VISTREL_NEAR; }},
    {"Edge", 12, VISTREL_BGGR,
     [](vistrel_conversion& c) { c.algorithm = VISTREL_EDGE, c.threshold = 9; }},
    {"VariableGradientsRgb", 10, VISTREL_BGGR,
     [](vistrel_conversion& c) { c.algorithm = VISTREL_VNG, c.format = VISTREL_RGB24; }},
    {"LumaPadded", 12, VISTREL_GBRG,
     [](vistrel_conversion& c) { c.format = VISTREL_GRAY16, c.edges = VISTREL_EDGES_PADDED; }},
    {"GrayWorld", 12, VISTREL_GBRG,
     [](vistrel_conversion& c) { c.white_balance = VISTREL_BALANCE_GRAY_WORLD, setBlack(c, 9); }},
    {"KimmelBinned", 10, VISTREL_GBRG,
     [](vistrel_conversion& c) { c.algorithm = VISTREL_KIMMEL, c.binning = 3; }},
    {"Table", 12, VISTREL_RGGB,
     [](vistrel_conversion& c) {
       c.reduction = VISTREL_TABLE, c.table = g_table.data(), c.table_entries = 1024;
     }},
    {"FinishedGrayWorld", 12, VISTREL_GBRG,
     [](vistrel_conversion& c) {
       setFinish(c, g_finish), setCalibration(c, g_calibration);
       c.white_balance = VISTREL_BALANCE_GRAY_WORLD;
     }},
    {"FinishedMono", 12, VISTREL_MONO,
     [](vistrel_conversion& c) { setFinish(c, g_finish), c.format = VISTREL_MONO16; }},
    {"Turned", 10, VISTREL_RGGB,
     [](vistrel_conversion& c) { c.orientation = VISTREL_TURNED_90, c.format = VISTREL_NV12; }},
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

struct Allocations : ::testing::TestWithParam<Case> {
  const Case& c = GetParam();
  std::vector<uint16_t> samples = samplesOf<uint16_t>(
      40, 31, [this](auto x, auto y) { return (x * 211 + y * 397 + x * y) % (1u << c.bits); });
  vistrel_frame frame = frameOf(samples, 40, 31, c.bits, c.phase);
  vistrel_conversion conversion = defaultConversion(frame);
  Image expected;

  Allocations() {
    c.choose(conversion);
    expected = convert(frame, conversion);
  }
};

TEST_P(Allocations, MayFail) {
  Bytes pixels(expected.pixels.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const auto work = [&](vistrel_error* error) {
    return vistrel_convert(&frame, &conversion, &image, error);
  };
  long live = g_live;
  const auto check = [&] {
    std::fill(pixels.begin(), pixels.end(), uint8_t{77});
    const int32_t status = work(nullptr);
    EXPECT_EQ(g_live, live);
    EXPECT_EQ(status, VISTREL_OK);
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), expected.pixels.begin()));
  };
  for (const bool fromThenOn : {false, true}) {
    live = g_live;
    failEach(work, fromThenOn, check);
  }
}

// Nothing but the pointer says whether an allocation failed.
TEST_P(Allocations, MayFailOrSucceedWithAnyErrno) {
  std::vector<vistrel_stream*> all(VISTREL_MAX_STREAMS);  // so that each call allocates
  for (auto& s : all) ASSERT_EQ(vistrel_stream_acquire(VISTREL_NO_WAIT, &s, nullptr), VISTREL_OK);
  std::vector<uint8_t> pixels(expected.pixels.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const auto work = [&](vistrel_error* error) {
    return vistrel_convert(&frame, &conversion, &image, error);
  };
  EXPECT_GE(failEach(
                work, false, [] {}, 0),
            1);
  g_watch = {.on = true, .succeededErrno = ENOMEM};
  EXPECT_EQ(work(nullptr), VISTREL_OK);
  EXPECT_GE(g_watch.calls, 1);
  g_watch = {};
  EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), expected.pixels.begin()));
  for (auto* s : all) vistrel_stream_release(s, nullptr);
}

TEST_P(Allocations, MayFailWhereAStreamGrows) {
  static size_t used = 1;  // by the other tests, and by earlier cases of this one
  std::vector<vistrel_stream*> streams(used += 2);
  for (auto& s : streams) ASSERT_EQ(vistrel_stream_acquire(VISTREL_WAIT, &s, nullptr), VISTREL_OK);
  vistrel_stream* stream = streams.front();
  Bytes pixels(expected.pixels.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  const auto work = [&](vistrel_error* error) {
    return vistrel_stream_convert(stream, &frame, &conversion, &image, error);
  };
  const auto count = [&] {
    g_watch = {.on = true};
    EXPECT_EQ(work(nullptr), VISTREL_OK);
    g_watch.on = false;
    return g_watch.calls;
  };
  stream = streams[used - 2];
  const int growing = count();
  ASSERT_GT(growing, count()) << "the streams must grow in this test";
  stream = streams[used - 1];
  failEach(work, false, [] {});
  EXPECT_EQ(work(nullptr), VISTREL_OK);
  EXPECT_TRUE(pixels == expected.pixels);
  for (auto* s : streams) vistrel_stream_release(s, nullptr);
}

TEST_P(Allocations, AreMadeByTheFirstConversionOnly) {
  vistrel_stream* stream = nullptr;
  ASSERT_EQ(vistrel_stream_acquire(VISTREL_WAIT, &stream, nullptr), VISTREL_OK);
  Bytes pixels(expected.pixels.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_layout layout{};
  vistrel_error error{};
  for (const int n : {0, 1}) {
    g_watch = {true, false, 0, 0, 0};
    EXPECT_EQ(vistrel_get_layout(&frame, &conversion, &layout, &error), VISTREL_OK);
    EXPECT_EQ(vistrel_stream_convert(stream, &frame, &conversion, &image, &error), VISTREL_OK);
    g_watch.on = false;
    EXPECT_LE(g_watch.calls, n ? 0 : 1);
  }
  const long live = g_live;
  EXPECT_EQ(vistrel_stream_trim(stream, &error), VISTREL_OK);
  EXPECT_EQ(g_live, layout.working_bytes ? live - 1 : live);
  vistrel_stream_release(stream, nullptr);
  vistrel_trim();
  EXPECT_LE(g_live, live);
}

// A stream keeps what the largest conversion needed, whichever side of it was longest.
TEST(AllocationsOfAStream, AreNoneForFormerShapesInTurn) {
  const std::vector<uint8_t> samples(300 * 200, 50);
  std::vector<uint8_t> pixels(3 * samples.size());
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  Stream stream = Stream::acquire();
  int calls = 0;
  for (int round = 0; round < 3; ++round)
    for (const uint32_t width : {300u, 200u, 20u}) {
      const vistrel_frame frame = frameOf(samples, width, 60'000 / width, VISTREL_RGGB);
      const vistrel_conversion conversion = defaultConversion(frame);
      g_watch = {.on = true};
      EXPECT_EQ(vistrel_stream_convert(stream.handle(), &frame, &conversion, &image, nullptr),
                VISTREL_OK);
      calls = g_watch.calls;
      g_watch = {};
      if (round > 0) {
        EXPECT_EQ(calls, 0) << width;
      }
    }
}

TEST(AllocationsOfUnpacking, AreNone) {
  const uint8_t bytes[] = {1, 2, 3};
  const vistrel_packed packed = packedOf(bytes, 2, 1, VISTREL_PACKING_MIPI, 12);
  vistrel_packed_layout layout{};
  uint16_t samples[2];
  g_watch = {true, false, 0, 0, 0};
  EXPECT_EQ(vistrel_get_packed_layout(&packed, &layout, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_unpack(&packed, samples, sizeof samples, nullptr), VISTREL_OK);
  g_watch.on = false;
  EXPECT_EQ(g_watch.calls, 0);
}

INSTANTIATE_TEST_SUITE_P(Every, Allocations, ::testing::ValuesIn(kCases),
                         [](const auto& test) { return test.param.name; });

TEST(AllocationsOfThePool, AreNone) {
  const auto work = [](vistrel_error* error) {
    vistrel_stream* stream = nullptr;
    const int32_t status = vistrel_stream_acquire(VISTREL_WAIT, &stream, error);
    if (status == VISTREL_OK) vistrel_stream_release(stream, nullptr);
    return status;
  };
  const long live = g_live;
  // In a process where no other test ran before.
  EXPECT_EQ(failEach(work, false, [live] { EXPECT_EQ(g_live, live); }), 0);
}

TEST(AllocationsOfTheLevel, MayFailAtTheFirstCall) {
  g_watch = {.on = true, .fromThenOn = true, .failAt = 1};
  vistrel_level();  // does not throw
  const int32_t status = vistrel_set_level(0, nullptr);
  const int failed = g_watch.failed;
  g_watch = {};
  EXPECT_EQ(status, failed ? VISTREL_NO_MEMORY : VISTREL_OK);
  EXPECT_EQ(vistrel_set_level(0, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_level(), 0u);
}

TEST(AllocationsOfTheCppInterface, MayFail) {
  const std::vector<uint8_t> samples(20 * 10, 50);
  const vistrel_frame frame = frameOf(samples, 20, 10, VISTREL_RGGB);
  const vistrel_conversion conversion = defaultConversion(frame);
  convert(frame, conversion);
  const auto work = [&](vistrel_error* error) {
    const auto image = tryConvert(frame, conversion);
    if (!image) {
      std::copy_n(image.error().reason(), 14, error->reason);
      std::copy_n(image.error().what(), 14, error->text);
      error->status = image.error().status();
    }
    return image ? VISTREL_OK : image.error().status();
  };
  EXPECT_GE(failEach(work, false, [] {}), 1);
  EXPECT_GE(failEach(work, true, [] {}), 1);
}

TEST(AllocationsOfAFlatField, MayFail) {
  const std::vector<uint8_t> samples(20 * 10, 50);
  const vistrel_frame frame = frameOf(samples, 20, 10, VISTREL_RGGB);
  const vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint16_t> flat(samples.size());
  const auto work = [&](vistrel_error* error) {
    return vistrel_measure_flat(&frame, &conversion, flat.data(), 2 * flat.size(), error);
  };
  const long live = g_live;
  EXPECT_GE(failEach(work, false, [live] { EXPECT_EQ(g_live, live); }), 1);
  EXPECT_EQ(work(nullptr), VISTREL_OK);
}

TEST(AllocationsOfARejection, MayFail) {
  vistrel_frame frame{};
  vistrel_conversion conversion{};
  vistrel_layout layout{};
  const auto work = [&](vistrel_error* error) {
    return vistrel_get_layout(&frame, &conversion, &layout, error);
  };
  const long live = g_live;
  failEach(work, true, [live] { EXPECT_EQ(g_live, live); });
}

}  // namespace
}  // namespace vistrel
