// Rows of finished pixels: what reaches the rows behind them.
#include "finish/finished_rows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace vistrel::core::test {
namespace {

// Collects bytes, in place or not.
class CollectedRows final : public PixelRows {
 public:
  explicit CollectedRows(bool inPlace) : inPlace_(inPlace), row_(4096) {}

  void* inPlace(size_t) override { return nullptr; }
  void begin(size_t y) override { y_ = y, used_ = 0; }
  void* next() override { return inPlace_ ? row_.data() + used_ : nullptr; }
  void append(const void* pixels, size_t n) override {
    if (!inPlace_) std::memcpy(row_.data() + used_, pixels, n);
    used_ += n;
  }
  void end() override { ended_ = true; }

  bool inPlace_, ended_ = false;
  std::vector<uint8_t> row_;
  size_t y_ = 0, used_ = 0;
};

// Appended in odd portions, longer than what is finished at a time.
void expectFinished(bool inPlace) {
  std::vector<uint8_t> table(kFinishEntries);
  fillFinishTable(4096, nullptr, 0, 1, table.data());
  const Finish finish{.channels = 1, .bits = 16, .sampleBytes = 1, .table = table.data()};
  std::vector<uint16_t> pixels(1000);
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint16_t>(257 * (i % 256));
  CollectedRows rows(inPlace);
  Arena count;
  FinishedRows(finish, rows, count);
  alignas(Arena::kAlign) static unsigned char memory[4096];
  ASSERT_LE(count.used(), sizeof memory);
  Arena arena(memory);
  FinishedRows finished(finish, rows, arena);
  EXPECT_EQ(finished.inPlace(7), nullptr);
  finished.begin(7);
  finished.append(pixels.data(), 3);
  finished.append(pixels.data() + 3, 600);
  finished.append(pixels.data() + 603, 397);
  finished.end();
  EXPECT_TRUE(rows.ended_);
  EXPECT_EQ(rows.y_, 7u);
  ASSERT_EQ(rows.used_, 1000u);
  for (size_t i = 0; i < 1000; ++i) ASSERT_EQ(rows.row_[i], i % 256) << i;
}

TEST(FinishedRows, GoIntoTheRowInPlace) { expectFinished(true); }
TEST(FinishedRows, GoThroughAChunk) { expectFinished(false); }

}  // namespace
}  // namespace vistrel::core::test
