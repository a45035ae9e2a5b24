#include "samples/scan.h"

#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/samples/guarded.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Scan);

// Each sample in turn has the one excess bit.
template <class T>
void expectFound() {
  GuardedInput input;
  const T excess = static_cast<T>(0x80 << (8 * sizeof(T) - 8));
  for (const size_t n : lengths()) {
    auto row = noise<T>(n, excess - 1u, unsigned(n));
    const auto place = [&](size_t skipped) {
      return input.place(row.data(), n * sizeof(T), skipped % 2 ? Edge::start : Edge::end, skipped);
    };
    EXPECT_FALSE(exceeds(place(0), n, excess));
    EXPECT_EQ(firstExceeding(place(1), n, excess), n);
    for (size_t i = 0; i < std::min<size_t>(n, 300); ++i) {
      row[i] = static_cast<T>(row[i] | excess);
      ASSERT_TRUE(exceeds(place(i % 16), n, excess)) << i << " of " << n;
      ASSERT_EQ(firstExceeding(place(0), n, excess), i);
      row[i] = static_cast<T>(row[i] ^ excess);
    }
  }
}

TEST_P(Scan, FindsExcessBits) {
  expectFound<uint8_t>();
  expectFound<uint16_t>();
}

template <class T>
void expectSums(const std::vector<T>& row, const uint8_t* from, const Preparation& how) {
  uint64_t sums[2] = {};
  for (size_t i = 0; i < row.size(); ++i) {
    const uint32_t black = i % 2 ? how.black.odd : how.black.even;
    const uint32_t s = row[i] >> how.below & ((1u << how.bits) - 1);
    sums[i % 2] += s > black ? s - black : 0;
  }
  const auto measured = sumsAboveBlack<T>(from, row.size(), how);
  ASSERT_EQ(measured.even, sums[0]) << row.size();
  ASSERT_EQ(measured.odd, sums[1]) << row.size();
}

template <class T>
void expectSums() {
  GuardedInput input;
  constexpr uint32_t size = 8 * sizeof(T);
  for (const Preparation& how : {Preparation{size, 0, 0, {0, 0}, {}},
                                 {size - 2, 0, 0, {7, 50}, {}},
                                 {size - 3, 3, 0, {11, 2}, {}}})
    for (const size_t n : lengths()) {
      const auto row = noise<T>(n, 0xFFFFFFFE, unsigned(n));
      const Edge edge = n % 2 ? Edge::start : Edge::end;
      expectSums(row, input.place(row.data(), n * sizeof(T), edge, n % 16), how);
    }
}

TEST_P(Scan, SumsColumns) {
  expectSums<uint8_t>();
  expectSums<uint16_t>();
}

// The largest samples, more than a lane of twice the length sums.
TEST_P(Scan, SumsLongRows) {
  const auto bytes = flat<uint8_t>(40001, 255);
  expectSums(bytes, bytes.data(), {8, 0, 0, {0, 0}, {}});
  const auto samples = flat<uint16_t>(5000001, 65535);
  expectSums(samples, reinterpret_cast<const uint8_t*>(samples.data()), {16, 0, 0, {0, 0}, {}});
}

}  // namespace
}  // namespace vistrel::core::test
