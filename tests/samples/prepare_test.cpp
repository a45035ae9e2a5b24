// Preparation at every level, against the formula.
#include "samples/prepare.h"

#include <fmt/format.h>

#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/samples/guarded.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Prepare);

uint64_t prepared(uint64_t s, uint64_t black, uint64_t gain, const Preparation& how) {
  const uint64_t fullScale = (1u << how.bits) - 1;
  s = s >> how.below & fullScale;
  s = ((s > black ? s - black : 0) * gain + 2048) / 4096;
  return (s < fullScale ? s : fullScale) >> how.dropped;
}

template <class T>
std::vector<T> model(const std::vector<T>& row, const Preparation& how) {
  std::vector<T> result;
  for (size_t i = 0; i < row.size(); ++i)
    result.push_back(static_cast<T>(i % 2 == 0
                                        ? prepared(row[i], how.black.even, how.gain.even, how)
                                        : prepared(row[i], how.black.odd, how.gain.odd, how)));
  return result;
}

// Limits of what fits 16 bits, for each count of bits.
constexpr uint32_t kGains[] = {1,     4095,  4096,  4097,  8191,  8192, 16383,
                               16384, 32767, 32768, 65535, 65536, 777,  5000};

// Pairs of gains and of blacks, bits lowest or highest, some dropped.
template <class T>
std::vector<Preparation> preparations() {
  constexpr uint32_t size = 8 * sizeof(T);
  std::mt19937 random(1);
  std::vector<Preparation> all;
  for (uint32_t bits = size == 8 ? 5 : 8; bits <= size; ++bits)
    for (const uint32_t below : {0u, size - bits})
      for (const uint32_t gain : kGains) {
        const auto any = [&](uint32_t end) { return static_cast<uint32_t>(random() % end); };
        const uint32_t other = kGains[any(std::size(kGains))], full = (1u << bits) - 1;
        all.push_back({bits, below, 0, {0, 0}, {gain, gain}});
        all.push_back({bits, below, any(bits), {any(full), any(full)}, {gain, other}});
        all.push_back({bits, below, any(3), {any(64), full}, {other, gain}});
      }
  return all;
}

std::string describe(const Preparation& how) {
  return fmt::format("{} bits above {}, {} dropped, black {} {}, gain {} {}", how.bits, how.below,
                     how.dropped, how.black.even, how.black.odd, how.gain.even, how.gain.odd);
}

template <class T>
void expectPrepared(const std::vector<Preparation>& preparations) {
  GuardedInput input;
  GuardedOutput output;
  const auto samples = noise<T>(9000, 0xFFFFFFFE, 2);
  size_t turn = 0;
  for (const Preparation& how : preparations)
    for (const size_t n : lengths()) {
      if (n > 70 && ++turn % 7 != 0) continue;
      const std::vector<T> row(samples.begin() + ptrdiff_t(n), samples.begin() + ptrdiff_t(2 * n));
      const Edge edge = turn % 2 ? Edge::start : Edge::end;
      const uint8_t* const from = input.place(row.data(), n * sizeof(T), edge, turn % 5);
      T* const to = reinterpret_cast<T*>(output.place(n * sizeof(T), edge));
      prepareRow<T>(from, n, to, how);
      ASSERT_EQ(output.samples<T>(), model(row, how)) << n << " samples: " << describe(how);
    }
}

TEST_P(Prepare, RowsOfBytes) { expectPrepared<uint8_t>(preparations<uint8_t>()); }
TEST_P(Prepare, RowsOf16Bits) { expectPrepared<uint16_t>(preparations<uint16_t>()); }

template <class T>
void expectPreparedInPlace() {
  const Preparation how{sizeof(T) == 1 ? 8u : 12u, 0, 1, {3, 16}, {5000, 9999}};
  for (const size_t n : lengths()) {
    auto row = noise<T>(n, 4095, unsigned(n));
    const auto expected = model(row, how);
    prepareRow<T>(row.data(), n, row.data(), how);
    ASSERT_EQ(row, expected);
  }
}

TEST_P(Prepare, InPlace) {
  expectPreparedInPlace<uint8_t>();
  expectPreparedInPlace<uint16_t>();
}

// All samples of so many bits in even and in odd columns, at all levels. Gains from both ends,
// whose sum is given.
template <class T>
void expectAllSamples(uint32_t bits, uint32_t step, uint32_t sumOfGains = 65537) {
  std::vector<T> row, expected, result(size_t{2} << bits);
  for (size_t i = 0; i < result.size(); ++i) row.push_back(static_cast<T>(i / 2));
  for (uint32_t gain = 1; gain <= sumOfGains / 2; gain += step) {
    const Preparation how{bits, 0, 0, {0, 0}, {gain, sumOfGains - gain}};
    const uint32_t top = (1u << bits) - 1;
    expected.resize(row.size());
    T* to = expected.data();
    uint32_t even = 2048, odd = 2048;  // of sample 0, in 1/4096
    for (uint32_t s = 0; s <= top; ++s, even += how.gain.even, odd += how.gain.odd) {
      *to++ = static_cast<T>(std::min(even >> 12, top));
      *to++ = static_cast<T>(std::min(odd >> 12, top));
    }
    for (const Level level : supportedLevels()) {
      const LevelScope scope(level);
      prepareRow<T>(row.data(), row.size(), result.data(), how);
      ASSERT_TRUE(result == expected) << nameOf(level) << ": " << describe(how);
    }
  }
}

TEST(PrepareAll, BytesByAllGains) { expectAllSamples<uint8_t>(8, 1); }
TEST(PrepareAll, TwelveBitsByAllGains) { expectAllSamples<uint16_t>(12, 1); }
TEST(PrepareAll, BytesByAllGainsBelow8) { expectAllSamples<uint8_t>(8, 1, 32768); }
TEST(PrepareAll, TwelveBitsByAllGainsBelow8) { expectAllSamples<uint16_t>(12, 1, 32768); }
TEST(PrepareAll, ThirteenBits) { expectAllSamples<uint16_t>(13, 61); }
TEST(PrepareAll, FourteenBits) { expectAllSamples<uint16_t>(14, 121); }
TEST(PrepareAll, FifteenBits) { expectAllSamples<uint16_t>(15, 241); }
TEST(PrepareAll, SixteenBits) { expectAllSamples<uint16_t>(16, 487); }

}  // namespace
}  // namespace vistrel::core::test
