#include "apps/tools/guess/code_length.h"

#include <gtest/gtest.h>

#include <random>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

constexpr uint32_t kColumns = 100;

template <class Sample>
app::CodeLength lengthOf(Sample sample) {
  std::vector<uint8_t> bytes;
  for (uint32_t y = 0; y < 100; ++y)
    for (uint32_t x = 0; x < kColumns; ++x) bytes.push_back(static_cast<uint8_t>(sample(x, y)));
  app::RowReader reader(bytes, {{VISTREL_PACKING_BYTES, 8, 8}, kColumns, kColumns, 0});
  return app::codeLengthOf(reader, kColumns, 5000);
}

// Each of the four sites has a colour of its own, which its neighbours predict.
TEST(CodeLength, AnEvenMosaicTakesNoBits) {
  const auto length =
      lengthOf([](uint32_t x, uint32_t y) { return 40 + 64 * (y & 1) + 32 * (x & 1); });
  EXPECT_EQ(length.bits, 0);
  EXPECT_EQ(length.unit, 8);
}

// The length of a number, a sign and the bits below the highest one: no more than a bit above 8.
TEST(CodeLength, NoiseTakesAllItsBits) {
  std::mt19937 random(5);
  const auto length = lengthOf([&](uint32_t, uint32_t) { return random(); });
  EXPECT_GT(length.bits, 7.5);
  EXPECT_LT(length.bits, 9);
  EXPECT_EQ(length.unit, 1);
}

// A shift of rows costs bits: content that depends on the column alone is predicted from above.
TEST(CodeLength, RowsAbovePredict) {
  std::mt19937 random(5);
  std::vector<uint32_t> columns(kColumns);
  for (uint32_t& c : columns) c = static_cast<uint32_t>(random() % 256);
  const auto straight = lengthOf([&](uint32_t x, uint32_t) { return columns[x]; });
  const auto sheared =
      lengthOf([&](uint32_t x, uint32_t y) { return columns[(x + 7 * y) % kColumns]; });
  EXPECT_LT(straight.bits, 0.5);
  EXPECT_GT(sheared.bits, 6);
}

}  // namespace
}  // namespace vistrel
