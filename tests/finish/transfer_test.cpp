// The points of transfer curves against their definitions in long double, and against points worked
// out by hand.
#include "finish/transfer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <string>
#include <vector>

namespace vistrel::core {
namespace {

using ::testing::ElementsAre;

std::vector<uint16_t> pointsOf(const Transfer& transfer, size_t count) {
  std::vector<uint16_t> points(count, 77);
  fillTransfer(transfer, points);
  return points;
}

long double valueOf(const Transfer& t, long double x) {
  const long double parameter = t.parameter / 1000.0L;
  switch (t.curve) {
    case TransferCurve::srgb:
      return x <= 0.0031308L ? 12.92L * x : 1.055L * std::pow(x, 1 / 2.4L) - 0.055L;
    case TransferCurve::gamma: return std::pow(x, 1 / parameter);
    case TransferCurve::asinh: return std::asinh(parameter * x) / std::asinh(parameter);
    default: return x;
  }
}

struct Case {
  std::string name;
  Transfer transfer;
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

struct Transfers : ::testing::TestWithParam<Case> {};

// Values that are halves, up to the error of long double, are left to the tests below.
TEST_P(Transfers, AreRoundedCorrectly) {
  const Transfer transfer = GetParam().transfer;
  for (const size_t count : {2, 3, 17, 256, 1000, 1024, 4096, 65535, 65536}) {
    const auto points = pointsOf(transfer, count);
    size_t different = 0, halves = 0;
    for (size_t i = 0; i < count; ++i) {
      const long double value = 65535 * valueOf(transfer, 1.0L * i / (count - 1));
      const long double below = std::floor(value);
      if (std::abs(value - below - 0.5L) < 0x1p-44L)
        ++halves;
      else
        different += points[i] != below + (value - below > 0.5L);
    }
    EXPECT_EQ(different, 0u) << count << " points";
    EXPECT_LE(halves, transfer.curve == TransferCurve::asinh ? 0 : count / 2) << count;
  }
}

TEST_P(Transfers, AscendFromBlackToWhite) {
  for (const size_t count : {2, 3, 100, 65536}) {
    const auto points = pointsOf(GetParam().transfer, count);
    EXPECT_EQ(points.front(), 0);
    EXPECT_EQ(points.back(), 65535);
    for (size_t i = 1; i < count; ++i) ASSERT_LE(points[i - 1], points[i]) << i;
  }
}

std::vector<Case> cases() {
  std::vector<Case> all{{"Linear", {TransferCurve::linear, 0}}, {"Srgb", {TransferCurve::srgb, 0}}};
  for (const uint32_t g : {100, 101, 450, 500, 999, 1000, 1800, 2000, 2200, 2400, 9999, 10000})
    all.push_back({"Gamma" + std::to_string(g), {TransferCurve::gamma, g}});
  for (const uint32_t n : {1, 10, 999, 1000, 3000, 10000, 50000, 1234567, 999999999, 1000000000})
    all.push_back({"Asinh" + std::to_string(n), {TransferCurve::asinh, n}});
  return all;
}
INSTANTIATE_TEST_SUITE_P(Curves, Transfers, ::testing::ValuesIn(cases()),
                         [](const auto& c) { return c.param.name; });

TEST(Transfer, LinearRoundsHalvesUp) {
  EXPECT_THAT(pointsOf({TransferCurve::linear, 0}, 3), ElementsAre(0, 32768, 65535));
  EXPECT_THAT(pointsOf({TransferCurve::linear, 0}, 4), ElementsAre(0, 21845, 43690, 65535));
  const auto points = pointsOf({TransferCurve::linear, 0}, 65536);
  for (size_t i = 0; i < points.size(); ++i) ASSERT_EQ(points[i], i);
}

// (1/4)^(1/2) and (1/8)^(1/3) are halves, (1/2)^10 is 1/1024: 65535 / 1024 = 63.999.
TEST(Transfer, GammaRoundsHalvesUp) {
  EXPECT_THAT(pointsOf({TransferCurve::gamma, 2000}, 5),
              ElementsAre(0, 32768, 46340, 56755, 65535));
  EXPECT_EQ(pointsOf({TransferCurve::gamma, 3000}, 9)[1], 32768);
  EXPECT_EQ(pointsOf({TransferCurve::gamma, 100}, 3)[1], 64);
  for (const size_t count : {3, 5, 11, 1023, 40001, 65535})
    EXPECT_EQ(pointsOf({TransferCurve::gamma, 1000}, count),
              pointsOf({TransferCurve::linear, 0}, count));
}

// sqrt(i^2 / 2^2n) is i / 2^n: a half for every odd i, as 65535 is odd. 2^14 = 128^2.
TEST(Transfer, EveryHalfOfGammaTwoRoundsUp) {
  const auto points = pointsOf({TransferCurve::gamma, 2000}, (1 << 14) + 1);
  for (uint32_t i = 0; i <= 128; ++i) EXPECT_EQ(points[i * i], (65535 * i + 64) / 128) << i;
  const auto squares = pointsOf({TransferCurve::gamma, 500}, 257);
  for (uint32_t i = 0; i <= 256; ++i)
    EXPECT_EQ(squares[i], (uint64_t{65535} * i * i + 32768) / 65536) << i;
}

// 12.92 i / 65535 up to i = 205, since 0.0031308 * 65535 = 205.18; 12.92 * 205 = 2648.6. Next,
// 1.055 (206/65535)^(1/2.4) - 0.055 = 0.04060925, or 2661.3.
TEST(Transfer, SrgbHasAStraightPart) {
  const auto points = pointsOf({TransferCurve::srgb, 0}, 65536);
  EXPECT_EQ(points[1], 13);
  EXPECT_EQ(points[25], 323);  // 12.92 * 25 exactly
  EXPECT_EQ(points[205], 2649);
  EXPECT_EQ(points[206], 2661);
  EXPECT_EQ(points[32768], 48192);  // 48191.95
}

}  // namespace
}  // namespace vistrel::core
