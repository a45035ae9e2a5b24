// The engine on bands of an image.
#include "host/engine.h"

#include "tests/arena.h"
#include "tests/frames.h"

namespace vistrel::host {
namespace {

using core::Arena;

constexpr uint32_t kWidth = 83, kHeight = 61;

struct Case {
  uint32_t algorithm, format, binning, edges;
};
void PrintTo(const Case& c, std::ostream* out) {
  *out << "algorithm " << c.algorithm << ", format " << c.format << ", binning " << c.binning
       << ", edges " << c.edges;
}

std::vector<Case> everyCase() {
  std::vector<Case> cases;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    for (const uint32_t format : {VISTREL_BGR24, VISTREL_RGB48, VISTREL_GRAY16})
      for (const uint32_t binning : {1u, 3u})
        for (const uint32_t edges : {VISTREL_EDGES_NATIVE, VISTREL_EDGES_PADDED})
          cases.push_back({a->code, format, binning, edges});
  return cases;
}

struct Bands : ::testing::TestWithParam<Case> {
  const std::vector<uint16_t> samples = core::test::noise<uint16_t>(kWidth * kHeight, 1023, 8);
  vistrel_frame frame{};
  vistrel_conversion conversion{};

  Bands() {
    frame.samples = samples.data();
    frame.size = 2 * samples.size();
    frame.width = kWidth;
    frame.height = kHeight;
    frame.bytes_per_sample = 2;
    frame.bits = 10;
    frame.phase = VISTREL_GRBG;
    conversion.algorithm = GetParam().algorithm;
    conversion.format = GetParam().format;
    conversion.binning = GetParam().binning;
    conversion.edges = GetParam().edges;
  }

  static void make(const EngineCall& call, ImageRows rows) {
    Arena count;
    makeRows(call, rows, count);
    const std::unique_ptr<void, void (*)(void*)> block(
        std::aligned_alloc(Arena::kAlign, count.used()), std::free);
    std::memset(block.get(), 0xA5, count.used());
    Arena arena(block.get());
    makeRows(call, rows, arena);
    EXPECT_EQ(arena.used(), count.used());
  }
};

// In any order, whatever rows each has.
TEST_P(Bands, GiveTheWholeImage) {
  const Plan plan = makePlan(&frame, &conversion);
  const vistrel_layout& l = plan.layout;
  const auto call = [&](std::vector<uint8_t>& pixels) {
    return EngineCall{plan, frame, conversion, {}, pixels.data(), ptrdiff_t(l.row_bytes)};
  };
  std::vector<uint8_t> whole(l.bytes, 1), bands(l.bytes, 2);
  make(call(whole), {0, l.height});
  for (const ImageRows rows :
       {ImageRows{l.height - 3, l.height}, {0, 5}, {6, l.height - 3}, {5, 6}})
    make(call(bands), rows);
  EXPECT_TRUE(bands == whole);
}

INSTANTIATE_TEST_SUITE_P(Every, Bands, ::testing::ValuesIn(everyCase()));

}  // namespace
}  // namespace vistrel::host
