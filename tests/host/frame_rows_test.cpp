// The rows that the engine reads of a frame.
#include "host/frame_rows.h"

#include "tests/arena.h"
#include "tests/frames.h"

namespace vistrel::host {
namespace {

using core::test::Memory;

constexpr uint32_t kWidth = 20, kHeight = 12;

struct FrameRowsTest : ::testing::Test {
  std::vector<uint16_t> samples = core::test::noise<uint16_t>(kWidth * kHeight, 4095, 6);
  vistrel_frame frame{};
  vistrel_conversion conversion{};
  Memory memory;

  FrameRowsTest() {
    frame.samples = samples.data();
    frame.size = 2 * samples.size();
    frame.width = kWidth;
    frame.height = kHeight;
    frame.bytes_per_sample = 2;
    frame.bits = 12;
    frame.phase = VISTREL_RGGB;
    conversion.format = VISTREL_BGR48;
    conversion.binning = 1;
  }

  // expected(x, y): of the frame's sample at x, y.
  template <class Expected>
  void expectRows(const Gains& gains, Expected expected) {
    const Plan plan = makePlan(&frame, &conversion);
    FrameRows<uint16_t> rows(plan, frame, conversion, gains, memory);
    const auto mirrored = [](int64_t i, int64_t n) {
      return i < 0 ? -i : i < n ? i : 2 * n - 2 - i;
    };
    for (int y = 0; y < int(plan.height); ++y) {
      const uint16_t* const row = rows.row(y);
      for (int x = 0; x < int(plan.width); ++x)
        ASSERT_EQ(row[x], expected(uint32_t(mirrored(plan.x + x, kWidth)),
                                   uint32_t(mirrored(plan.y + y, kHeight))))
            << x << ", " << y;
      const std::vector<uint16_t> whole(row, row + plan.width);
      const auto [left, right] = rows.margins();
      ASSERT_EQ(left, size_t(std::max<int64_t>(-plan.x, 0)));
      ASSERT_EQ(right, size_t(std::max<int64_t>(plan.x + plan.width - kWidth, 0)));
      const uint16_t* const inside = rows.withoutMargins(y);
      ASSERT_TRUE(
          std::equal(inside, inside + (plan.width - left - right), whole.begin() + int(left)))
          << y;
    }
  }
  uint16_t at(uint32_t x, uint32_t y) const { return samples[y * kWidth + x]; }
};

TEST_F(FrameRowsTest, StayInTheFrameWherePossible) {
  conversion.region = {3, 2, 9, 7};
  expectRows({}, [&](uint32_t x, uint32_t y) { return at(x, y); });
  const Plan plan = makePlan(&frame, &conversion);
  core::Arena count;
  FrameRows<uint16_t> rows(plan, frame, conversion, {}, count);
  EXPECT_EQ(rows.row(4), &samples[6 * kWidth + 3]);
  EXPECT_EQ(count.used(), 0u);
}

TEST_F(FrameRowsTest, AreMirroredAroundTheFrame) {
  conversion.edges = VISTREL_EDGES_PADDED;
  expectRows({}, [&](uint32_t x, uint32_t y) { return at(x, y); });
}

TEST_F(FrameRowsTest, MayLieAtOddAddresses) {
  std::vector<uint8_t> bytes(2 * samples.size() + 1);
  std::memcpy(bytes.data() + 1, samples.data(), 2 * samples.size());
  frame.samples = bytes.data() + 1;
  expectRows({}, [&](uint32_t x, uint32_t y) { return at(x, y); });
}

TEST_F(FrameRowsTest, ArePrepared) {
  for (uint16_t& sample : samples) sample = uint16_t(sample << 4 | 5);
  frame.alignment = VISTREL_HIGH_BITS;
  conversion.truncate_to = 10;
  for (uint32_t& black : conversion.black) black = 100;
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  conversion.edges = VISTREL_EDGES_PADDED;
  const Gains gains{8192, 4096, 6000};  // red, green, blue
  for (uint32_t i = 0; i < 3; ++i) conversion.gains[i] = gains[i];
  expectRows(gains, [&](uint32_t x, uint32_t y) {
    const uint32_t value = at(x, y) >> 4, gain = gains[(x & 1) + (y & 1)];
    const uint32_t above = value > 100 ? value - 100 : 0;
    return std::min((above * gain + 2048) / 4096, 4095u) >> 2;
  });
}

}  // namespace
}  // namespace vistrel::host
