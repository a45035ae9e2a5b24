// Scaling at every level, against the formula.
#include "samples/scale.h"

#include <random>

#include "tests/levels.h"
#include "tests/samples/guarded.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Scale);

// In wide integers.
uint16_t scaled(uint64_t s, uint64_t black, uint64_t range, uint64_t factor, const Scaling& how) {
  s = (s & how.mask) >> how.below;
  const uint64_t v = std::min(s > black ? s - black : 0, range);
  const uint64_t half = uint64_t{1} << (30 - how.bits);
  return static_cast<uint16_t>(
      std::min<uint64_t>((v * factor + half) >> (31 - how.bits), how.fullScale()));
}

std::vector<uint16_t> model(const std::vector<uint16_t>& row, const Scaling& how) {
  std::vector<uint16_t> result;
  for (size_t i = 0; i < row.size(); ++i)
    result.push_back(i % 2 == 0
                         ? scaled(row[i], how.black.even, how.range.even, how.factor.even, how)
                         : scaled(row[i], how.black.odd, how.range.odd, how.factor.odd, how));
  return result;
}

Scaling drawScaling(std::mt19937& random) {
  const auto below = [&](uint32_t end) { return static_cast<uint32_t>(random() % end); };
  const uint32_t bits = 8 + below(9), full = (1u << bits) - 1, high = below(2) * (16 - bits);
  Scaling how{full << high, high, 8 + below(9), {below(full), below(full)}, {1, 1}, {1, 1}};
  how.range = {1 + below(full - how.black.even), 1 + below(full - how.black.odd)};
  const uint64_t largest = 1 + below(65536);
  how.factor = {Scaling::factorOf(how.bits, how.range.even, largest, largest),
                Scaling::factorOf(how.bits, how.range.odd, 1 + below(uint32_t(largest)), largest)};
  return how;
}

// Rows of 0 to 70 samples between guard pages, at odd addresses too.
TEST_P(Scale, IsTheFormula) {
  std::mt19937 random(5);
  GuardedInput input;
  GuardedOutput output;
  for (size_t n = 0; n < 700; ++n) {
    const Scaling how = drawScaling(random);
    std::vector<uint16_t> row(n % 71);
    for (uint16_t& s : row) s = static_cast<uint16_t>(random());
    const Edge edge = n % 2 ? Edge::end : Edge::start;
    const void* const from = input.place(row.data(), 2 * row.size(), edge, n % 3);
    auto* const to = reinterpret_cast<uint16_t*>(output.place(2 * row.size(), edge));
    scaleRow(from, row.size(), to, how);
    ASSERT_EQ(output.samples<uint16_t>(), model(row, how)) << n;
  }
}

// Ten bits with black 64 and white 959 to sixteen.
TEST_P(Scale, MapsBlackAndWhiteToTheEnds) {
  const uint32_t factor = Scaling::factorOf(16, 895, 4096, 4096);
  const Scaling how{1023, 0, 16, {64, 64}, {895, 895}, {factor, factor}};
  const std::vector<uint16_t> row{0, 64, 65, 959, 1023};
  std::vector<uint16_t> result(row.size());
  scaleRow(row.data(), row.size(), result.data(), how);
  EXPECT_EQ(result, (std::vector<uint16_t>{0, 0, 73, 65535, 65535}));  // 65535 / 895 = 73.2
}

}  // namespace
}  // namespace vistrel::core::test
