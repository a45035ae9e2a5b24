// Finishing at every level, against the formulas in wide integers.
#include "finish/finish_rows.h"

#include <algorithm>
#include <random>

#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(FinishRows);

using Pixel = std::array<int64_t, 3>;

// The table of a finish without exposure and transfer.
std::vector<uint16_t> identity() {
  std::vector<uint16_t> table(kFinishEntries);
  fillFinishTable(4096, nullptr, 0, 2, table.data());
  return table;
}

// How near the clip level, in 1/256.
int64_t clippingOf(int64_t v, int64_t clip) {
  const int64_t h = clip >> 4;
  return h ? std::clamp<int64_t>(v - clip + h, 0, h) * 256 / h : 0;
}

Pixel finished(Pixel v, const Finish& how) {
  const int64_t most = std::max({v[0], v[1], v[2]});
  Pixel t, least;
  for (size_t c = 0; c < 3; ++c) {
    t[c] = clippingOf(v[c], how.clip[c]);
    least[c] = v[c] + (((most - v[c]) * t[c] + 128) >> 8);
  }
  const int64_t middle = (std::min({least[0], least[1], least[2]}) + most + 1) >> 1;
  for (size_t c = 0; c < 3; ++c) v[c] += (std::max<int64_t>(middle - v[c], 0) * t[c] + 128) >> 8;
  if (!how.hasMatrix) return v;
  const Pixel from = v;
  for (size_t row = 0; row < 3; ++row) {
    const int32_t* const m = &how.matrix[3 * row];
    v[row] = std::clamp<int64_t>((m[0] * from[0] + m[1] * from[1] + m[2] * from[2] + 2048) >> 12, 0,
                                 65535);
  }
  return v;
}

std::vector<uint16_t> model(const std::vector<uint16_t>& pixels, const Finish& how) {
  std::vector<uint16_t> result;
  for (size_t i = 0; i < pixels.size(); i += 3) {
    Pixel v;
    for (size_t c = 0; c < 3; ++c)
      v[c] = pixels[i + c] << (16 - how.bits) | pixels[i + c] >> (2 * how.bits - 16);
    for (const int64_t x : finished(v, how)) result.push_back(static_cast<uint16_t>(x));
  }
  return result;
}

TEST_P(FinishRows, AreTheFormulas) {
  std::mt19937 random(8);
  const auto below = [&](uint32_t end) { return static_cast<uint32_t>(random() % end); };
  const auto table = identity();
  for (size_t round = 0; round < 300; ++round) {
    Finish how{.channels = 3, .bits = 8 + below(9), .sampleBytes = 2, .table = table.data()};
    for (int32_t& clip : how.clip) clip = static_cast<int32_t>(below(round % 3 ? 65536 : 40));
    if (round % 5 == 0) how.clip = {};
    how.hasMatrix = round % 2;
    for (int32_t& m : how.matrix) m = static_cast<int32_t>(below(21845)) - 10922;
    std::vector<uint16_t> pixels(3 * (round % 50 ? round % 50 : 700));
    for (uint16_t& s : pixels) s = static_cast<uint16_t>(below(1u << how.bits));
    std::vector<uint16_t> result(pixels.size());
    finishRow(pixels.data(), pixels.size() / 3, how, result.data());
    ASSERT_EQ(result, model(pixels, how)) << round;
  }
}

// One pixel of several tiles clips in one channel, which rises to the middle of the others.
TEST_P(FinishRows, EstimateTheHighlightsOfAnyPixel) {
  const auto table = identity();
  Finish how{.channels = 3, .bits = 16, .sampleBytes = 2, .table = table.data()};
  for (const size_t at : {0, 100, 255, 256, 511, 512, 598, 599})
    for (size_t channel = 0; channel < 3; ++channel) {
      how.clip = {60000, 60000, 60000};
      how.clip[channel] = 500;
      std::vector<uint16_t> pixels(3 * 600, 100);
      for (size_t i = 0; i < pixels.size(); i += 3) {
        pixels[i + (channel + 1) % 3] = 1000;
        pixels[i + (channel + 2) % 3] = 2000;
      }
      pixels[3 * at + channel] = 500;
      std::vector<uint16_t> expected = pixels, result(pixels.size());
      expected[3 * at + channel] = 1500;
      finishRow(pixels.data(), 600, how, result.data());
      ASSERT_EQ(result, expected) << at << ", channel " << channel;
    }
}

// Every level of many ranges, by a pixel whose other channels are 0.
TEST_P(FinishRows, ClipByTheQuotientRoundedDown) {
  const auto table = identity();
  Finish how{.channels = 3, .bits = 16, .sampleBytes = 2, .table = table.data()};
  for (int32_t height = 1; height < 4096; height += 13) {
    how.clip = {16 * height, 0, 0};
    std::vector<uint16_t> pixels(3 * (static_cast<size_t>(height) + 1));
    for (size_t i = 0; i < pixels.size(); i += 3)
      pixels[i] = static_cast<uint16_t>(15 * height + static_cast<int32_t>(i / 3));
    std::vector<uint16_t> result(pixels.size());
    finishRow(pixels.data(), pixels.size() / 3, how, result.data());
    ASSERT_EQ(result, model(pixels, how)) << height;
  }
}

TEST_P(FinishRows, MonoGoesThroughTheTable) {
  const std::vector<uint16_t> curve{65535, 0};
  std::vector<uint8_t> table(kFinishEntries);
  fillFinishTable(8192, curve.data(), curve.size(), 1, table.data());
  const Finish how{.channels = 1, .bits = 10, .sampleBytes = 1, .table = table.data()};
  const std::vector<uint16_t> pixels{0, 1, 511, 512, 1023};
  std::vector<uint8_t> result(pixels.size());
  finishRow(pixels.data(), pixels.size(), how, result.data());
  // Twice the light, negative: 65535 - 2 * 64, 65535 - 2 * 32735 (511 << 6 | 511 >> 4) and so on.
  EXPECT_EQ(result, (std::vector<uint8_t>{255, 255, 0, 0, 0}));
}

// Points at every value are the curve itself.
TEST(FinishTable, TakesPointsAsTheyAre) {
  std::vector<uint16_t> points(65536), table(kFinishEntries);
  for (size_t i = 0; i < points.size(); ++i) points[i] = static_cast<uint16_t>(i * 7919);
  fillFinishTable(4096, points.data(), points.size(), 2, table.data());
  EXPECT_EQ(table, points);
}

// Between two points the line is straight, rounded to the nearest value.
TEST(FinishTable, InterpolatesBetweenPoints) {
  const std::vector<uint16_t> points{0, 60000, 30000};
  std::vector<uint16_t> table(kFinishEntries);
  fillFinishTable(4096, points.data(), points.size(), 2, table.data());
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[16384], 30000);  // 2 * 16384 / 65535 of 60000 is 30000.46
  EXPECT_EQ(table[49151], 45000);  // 60000 - 32767 / 65535 of 30000 is 45000.23
  EXPECT_EQ(table[65535], 30000);
}

// The largest amplification makes everything but black white, the smallest everything black.
TEST(FinishTable, HoldsExtremeExposures) {
  std::vector<uint16_t> table(kFinishEntries);
  fillFinishTable(1u << 28, nullptr, 0, 2, table.data());
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 65535);
  fillFinishTable(0, nullptr, 0, 2, table.data());
  EXPECT_EQ(table[65535], 0);
}

// Eight bits are the nearest of 255ths.
TEST(FinishTable, RoundsToBytes) {
  std::vector<uint8_t> table(kFinishEntries);
  fillFinishTable(4096, nullptr, 0, 1, table.data());
  for (size_t v = 0; v < kFinishEntries; ++v)
    ASSERT_EQ(table[v], (v * 255 * 2 + 65535) / (2 * 65535)) << v;
}

}  // namespace
}  // namespace vistrel::core::test
