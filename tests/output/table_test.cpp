// Reduction of samples by a table: how the table is made, and how samples are mapped.
#include "output/table.h"

#include <numeric>

#include "output/colour.h"
#include "output/mono.h"
#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/output/by_name.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(UserTable);
VISTREL_LEVEL_SUITE(Curves);

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;

Bytes makeTable(uint32_t nLutMode, const Samples16& user = {}, int32_t nUserShift = 0) {
  Bytes table(kTableEntries, 0x77);
  Create10To8BitLUT(table.data(), nLutMode, user.empty() ? nullptr : user.data(), nUserShift);
  return table;
}

// A row of 16-bit samples through nLutMode, unbinned.
Bytes reduce(const Samples16& row, uint32_t nSrcBits, uint32_t nLutMode,
             const Samples16& user = {}) {
  const uint32_t width = static_cast<uint32_t>(row.size());
  Canvas<uint8_t> canvas(width);
  Image8BitGrayScale(row.data(), width, 1, nSrcBits, canvas.data(), 0, 0, width, 1, 0, nLutMode,
                     user.empty() ? nullptr : user.data());
  return canvas.samples();
}

// 0, 1, 2 ...
Samples16 ramp(size_t samples) {
  Samples16 samples16(samples);
  std::iota(samples16.begin(), samples16.end(), uint16_t{0});
  return samples16;
}

TEST(MakeTable, CopiesTheFirst1024EntriesOfATenBitTable) {
  const Samples16 user = noise<uint16_t>(4096, 255, 1);
  EXPECT_EQ(makeTable(10, user, 0), Bytes(user.begin(), user.begin() + 1024));
}

TEST(MakeTable, TakesEveryFourthEntryForTwelveBits) {
  const Samples16 user = noise<uint16_t>(4096, 255, 1);
  const Bytes table = makeTable(10, user, 2);
  for (size_t i = 0; i < 1024; ++i) ASSERT_EQ(table[i], user[4 * i]);
}

TEST(MakeTable, DropsTheHighByteWithoutClamping) {
  EXPECT_THAT(makeTable(10, flat<uint16_t>(4096, 0x0123), 0), Each(0x23));
  EXPECT_THAT(makeTable(10, flat<uint16_t>(4096, 0xFF00), 1), Each(0));
}

TEST(MakeTable, NeverReadsPastTheUserTable) {
  Samples16 user = flat<uint16_t>(4096, 1);
  user[4095] = 200;
  const Bytes table = makeTable(10, user, 4);
  EXPECT_THAT(Bytes(table.begin(), table.begin() + 256), Each(1));
  EXPECT_THAT(Bytes(table.begin() + 256, table.end()), Each(200));
}

TEST(MakeTable, UndefinedModesGiveZeros) {
  for (uint32_t nLutMode : {8u, 9u, 11u, 12u, 255u, 0x80000000u, 0xFFFFFFFFu})
    EXPECT_THAT(makeTable(nLutMode), Each(0)) << nLutMode;
}

struct Point {
  unsigned at, value;
};

void expectPoints(uint32_t nLutMode, const std::vector<Point>& points) {
  const Bytes table = makeTable(nLutMode);
  for (const Point& p : points) EXPECT_EQ(table[p.at], p.value) << nLutMode << " at " << p.at;
}

TEST(MakeTable, Modes3To7AreCurves2To6) {
  expectPoints(3, {{0, 0}, {127, 63}, {128, 64}, {767, 223}, {768, 224}, {1023, 255}});
  expectPoints(4, {{0, 0}, {191, 95}, {192, 96}, {639, 207}, {640, 208}, {1023, 255}});
  expectPoints(5, {{63, 63}, {64, 64}, {127, 95}, {128, 96}, {511, 191}, {512, 192}, {1023, 255}});
  expectPoints(6, {{128, 16}, {255, 31}, {256, 32}, {512, 96}, {768, 176}, {1023, 255}});
  expectPoints(7, {{0, 0},
                   {81, 10},
                   {204, 33},
                   {409, 102},
                   {512, 152},
                   {655, 215},
                   {768, 240},
                   {880, 250},
                   {972, 254},
                   {1023, 255}});
}

TEST(MakeTable, TheSplineNeverFalls) {
  const Bytes table = makeTable(7);
  EXPECT_TRUE(std::is_sorted(table.begin(), table.end()));
}

TEST(TableSource, LimitsTheIndexAndCountsTheShiftModulo32) {
  Bytes table(1024);
  table[1023] = 9;
  table[1] = 7;
  const Samples16 samples = {1023, 1024, 65535, 1};
  const CLutTransform direct{table.data(), samples.data(), 0},
      wrapped{table.data(), samples.data(), 32};
  for (size_t i : {0u, 1u, 2u}) EXPECT_EQ(direct[i], 9);
  EXPECT_EQ(direct[3], 7);
  EXPECT_EQ(wrapped[3], 7);
}

TEST_P(UserTable, AQuarterRampOfTenBitsEqualsTheFirstWindow) {
  Samples16 user = ramp(1024), samples = ramp(1024);
  for (uint16_t& entry : user) entry = static_cast<uint16_t>(entry >> 2);
  EXPECT_EQ(reduce(samples, 10, 10, user), reduce(samples, 10, 0));
}

TEST_P(UserTable, EveryFourthEntryDecidesForFourSamplesOfTwelveBits) {
  const Samples16 user = noise<uint16_t>(4096, 255, 4);
  const Bytes result = reduce(ramp(4096), 12, 10, user);
  for (size_t i = 0; i < result.size(); ++i) ASSERT_EQ(result[i], user[i / 4 * 4]) << i;
}

TEST_P(UserTable, AllZeroGivesAllZeroUpToTheTop) {
  EXPECT_THAT(reduce(ramp(4096), 12, 10, flat<uint16_t>(4096, 0)), Each(0));
}

TEST_P(UserTable, MappedBytesAreSummedAndClamped) {
  const Samples16 user = flat<uint16_t>(1024, 255), frame = ramp(4 * 100);
  Canvas<uint8_t> canvas(100);
  Image8BitGrayScale(frame.data(), 200, 2, 10, canvas.data(), 0, 0, 100, 1, 1, 10, user.data());
  EXPECT_THAT(canvas.samples(), Each(255));
}

TEST_P(UserTable, MapsTheSamplesAndNotTheBinnedValue) {
  Samples16 user(1024);
  user[10] = 100, user[20] = 7, user[15] = 50, user[30] = 60;
  const Samples16 block = {10, 10, 20, 20};
  uint8_t out = 0;
  Image8BitGrayScale(block.data(), 2, 2, 10, &out, 0, 0, 1, 1, 1, 10, user.data());
  EXPECT_EQ(out, (100 + 100 + 7 + 7) / 2);
}

TEST_P(UserTable, FewerThanTenBitsGiveAFlatImage) {
  Samples16 user = flat<uint16_t>(4096, 5);
  user[0] = 77;
  for (uint32_t nSrcBits : {0u, 8u, 9u})
    EXPECT_THAT(reduce(ramp(512), nSrcBits, 10, user), Each(77)) << nSrcBits;
}

TEST_P(UserTable, SamplesAboveTheSourceBitsReadTheLastEntry) {
  Samples16 user = ramp(1024);
  user[1023] = 200;
  EXPECT_THAT(reduce(flat<uint16_t>(70, 65535), 10, 10, user), Each(200));
}

TEST_P(Curves, MapTheTopTenBitsAlone) {
  for (uint32_t nLutMode : {3u, 4u, 5u, 6u, 7u})
    for (uint32_t nSrcBits : {10u, 12u, 14u, 16u}) {
      const Bytes table = makeTable(nLutMode);
      const size_t samples = size_t{1} << nSrcBits;
      const Bytes result = reduce(ramp(samples), nSrcBits, nLutMode);
      for (size_t i = 0; i < samples; ++i) ASSERT_EQ(result[i], table[i >> (nSrcBits - 10)]) << i;
    }
}

TEST_P(Curves, FewerThanTenBitsGiveAFlatImage) {
  for (uint32_t nLutMode : {3u, 4u, 5u, 6u, 7u})
    for (uint32_t nSrcBits : {0u, 1u, 8u, 9u})
      EXPECT_THAT(reduce(ramp(512), nSrcBits, nLutMode), Each(0));
}

TEST_P(Curves, ApplyBeforeTheSum) {
  // Curve 2 maps 64 to 32 and 1023 to 255; four pixels of 64 make 64, and not 2 * 64 mapped.
  Canvas<uint8_t> canvas(40);
  Image8BitGrayScale(flat<uint16_t>(160, 64).data(), 80, 2, 10, canvas.data(), 0, 0, 40, 1, 1, 3,
                     nullptr);
  EXPECT_THAT(canvas.samples(), Each(64));
}

}  // namespace
}  // namespace vistrel::core::test
