#include "common/rows/row_sink.h"

#include <numeric>

#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

constexpr size_t kColumns = 1000;

// Pixels of a row, three samples each, none of them zero.
std::vector<uint16_t> row() {
  std::vector<uint16_t> samples(3 * kColumns);
  std::iota(samples.begin(), samples.end(), uint16_t{1});
  return samples;
}

struct Chunks final : ChunkListener {
  std::vector<std::vector<size_t>> heard;  // y, begin, end

  void written(int y, size_t begin, size_t end) override {
    heard.push_back({static_cast<size_t>(y), begin, end});
  }
};

TEST(RowSink, CountsPixelsOfThreeSamplesFromWhereItIs) {
  uint8_t pixels[60], copy[60];
  RowSink<uint8_t> sink(pixels, copy), alone(pixels);
  EXPECT_EQ(sink.pixels(), pixels);
  EXPECT_EQ(sink.copy(), copy);
  EXPECT_EQ(alone.copy(), nullptr);
  sink.skip(2);
  sink.skip(3);
  alone.skip(1);
  EXPECT_EQ(sink.pixels(), pixels + 15);
  EXPECT_EQ(sink.copy(), copy + 15);
  EXPECT_EQ(alone.copy(), nullptr);
}

TEST(RowSink, CopiesPixelsThatWereStoredOnce) {
  std::vector<uint16_t> pixels = row();
  Canvas<uint16_t> copy(9);
  RowSink<uint16_t> sink(pixels.data(), copy.data());
  sink.skip(1);
  sink.copyPixels(0, 1);
  constexpr uint16_t kPreset = Canvas<uint16_t>::kPreset;
  EXPECT_THAT(copy.samples(),
              ElementsAre(kPreset, kPreset, kPreset, 4, 5, 6, kPreset, kPreset, kPreset));
  RowSink<uint16_t>(pixels.data()).copyPixels(0, 3);  // nowhere
}

TEST(RowSink, ReportsChunksAndThenTheRest) {
  std::vector<uint16_t> pixels = row();
  Chunks chunks;
  RowSink<uint16_t> sink(pixels.data());
  sink.listen(&chunks, 7);
  size_t reported = 0;
  for (size_t x = 0; x < kColumns; x += 20) {
    sink.progress().written(x, x + 20);
    if (!chunks.heard.empty()) reported = chunks.heard.back()[2];
    EXPECT_LE(reported, x + 20);
    EXPECT_LT(x + 20 - reported, ChunkListener::kChunk + 20);
  }
  EXPECT_LE(chunks.heard.size(), kColumns / ChunkListener::kChunk);
  sink.finish(kColumns);
  reported = 0;
  for (const auto& chunk : chunks.heard) {  // y, begin, end
    EXPECT_EQ(chunk[0], 7u);
    EXPECT_EQ(chunk[1], reported);
    reported = chunk[2];
  }
  EXPECT_EQ(reported, kColumns);
}

TEST(RowSink, ReportsPixelsAsTheRowCountsThem) {
  std::vector<uint16_t> pixels = row();
  Chunks chunks;
  RowSink<uint16_t> sink(pixels.data());
  sink.listen(&chunks, 0);
  sink.skip(10);
  sink.progress().written(0, 290);
  EXPECT_THAT(chunks.heard, ElementsAre(std::vector<size_t>{0, 0, 300}));
}

TEST(RowSink, CopiesPastTheCachesWithWhatLiesBeside) {
  std::vector<uint16_t> pixels = row();
  const uint16_t *const work = pixels.data(), *const inner = work + 6;  // two pixels of guard
  Canvas<uint16_t> workCopy(3 * kColumns), result(3 * kColumns - 12);
  RowSink<uint16_t> sink(pixels.data() + 6);
  sink.writeNonTemporal({workCopy.data(), work}, work + pixels.size());
  sink.writeResultNonTemporal({result.data(), inner});
  for (size_t x = 0; x < kColumns - 4; x += 83) sink.progress().written(x, x + 83);
  sink.finish(kColumns - 4);
  storeFence();
  EXPECT_EQ(workCopy.samples(), pixels);
  EXPECT_TRUE(std::equal(inner, inner + 3 * (kColumns - 4), result.data()));
}

TEST(RowSink, FinishesACopyWithoutAnyReport) {
  std::vector<uint16_t> pixels = row();
  Canvas<uint16_t> result(3 * kColumns);
  RowSink<uint16_t> sink(pixels.data());
  sink.writeResultNonTemporal({result.data(), pixels.data()});
  sink.finish(kColumns);
  storeFence();
  EXPECT_EQ(result.samples(), pixels);
}

// Pixels that may still change are neither copied nor reported until the row is finished.
TEST(RowSink, HoldsARowBack) {
  std::vector<uint16_t> pixels = row();
  Canvas<uint16_t> copy(3 * kColumns);
  Chunks chunks;
  RowSink<uint16_t> sink(pixels.data(), copy.data());
  sink.listen(&chunks, 0);
  sink.hold();
  EXPECT_EQ(sink.copy(), nullptr);
  sink.progress().written(0, kColumns - 1);
  EXPECT_TRUE(chunks.heard.empty());
  EXPECT_TRUE(copy.untouched());
  pixels[0] = 77;
  sink.finish(kColumns);
  EXPECT_THAT(chunks.heard, ElementsAre(std::vector<size_t>{0, 0, kColumns}));
  EXPECT_EQ(copy.samples(), pixels);
}

TEST(PlainImage, HasItsRowsAStepApart) {
  uint8_t pixels[90];
  PlainImage<uint8_t> downwards(pixels, 30), upwards(pixels + 60, -30);
  EXPECT_EQ(downwards.row(2).pixels(), pixels + 60);
  EXPECT_EQ(upwards.row(2).pixels(), pixels);
  EXPECT_EQ(downwards.row(1).copy(), nullptr);
}

}  // namespace
}  // namespace vistrel::core::test
