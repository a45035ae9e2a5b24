// Shuffles and sums in registers of 16 or 32 bytes, which levels above base have. The second half
// of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/registers_test.cpp"
#include <algorithm>
#include <numeric>

#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/common/simd/levels_above_base.h"

#ifdef OF_LEVEL

namespace vistrel::core::test {
namespace {

class Registers : public AtEveryLevel {
 protected:
  const size_t bytes_ = *OF_LEVEL(kRegisterBytes);
};

INSTANTIATE_TEST_SUITE_P(Every, Registers, ::testing::ValuesIn(levelsAboveBase()),
                         ::testing::PrintToStringParamName());

using Bytes = std::vector<uint8_t>;

// n elements: first, first + 1, and so on.
template <class T>
std::vector<T> counted(size_t n, int first = 0) {
  std::vector<T> elements(n);
  std::iota(elements.begin(), elements.end(), static_cast<T>(first));
  return elements;
}

TEST_P(Registers, HaveGroupsOf16Bytes) {
  EXPECT_EQ(static_cast<size_t>(*OF_LEVEL(kGroups)) * 16, bytes_);
  const Bytes source = counted<uint8_t>(60);
  Bytes all(bytes_), apart(bytes_), second(16);
  OF_LEVEL(repeatGroup)(source.data() + 1, all.data());
  OF_LEVEL(joinGroups)(source.data() + 1, 20, apart.data());
  OF_LEVEL(lastGroup)(apart.data(), second.data());
  for (size_t i = 0; i < bytes_; ++i) {
    EXPECT_EQ(all[i], 1 + i % 16);
    EXPECT_EQ(apart[i], 1 + i % 16 + 20 * (i / 16));
  }
  EXPECT_TRUE(std::equal(second.begin(), second.end(), apart.end() - 16));
}

TEST_P(Registers, PermuteTheBytesOfEachGroup) {
  const Bytes order = {15, 0, 14, 1, 13, 2, 12, 3, 11, 4, 10, 5, 9, 6, 8, 7};
  const Bytes source = counted<uint8_t>(bytes_, 100);
  Bytes result(bytes_);
  OF_LEVEL(permuted)(source.data(), order.data(), result.data());
  for (size_t i = 0; i < bytes_; ++i)
    EXPECT_EQ(result[i], source[i / 16 * 16 + order[i % 16]]) << i;
}

#if VISTREL_X86

template <int lanes>
void expectBlended(void (*blended)(const int16_t*, const int16_t*, int16_t*), size_t n) {
  const std::vector<int16_t> a = counted<int16_t>(n), b = counted<int16_t>(n, 500);
  std::vector<int16_t> result(n);
  blended(a.data(), b.data(), result.data());
  for (size_t i = 0; i < n; ++i) EXPECT_EQ(result[i], lanes >> (i % 8) & 1 ? b[i] : a[i]) << i;
}

TEST_P(Registers, BlendLanesByTheBitsOfAMask) {
  expectBlended<0>(OF_LEVEL(blended<0>), bytes_ / 2);
  expectBlended<0x92>(OF_LEVEL(blended<0x92>), bytes_ / 2);
  expectBlended<0xFF>(OF_LEVEL(blended<0xFF>), bytes_ / 2);
}

#endif

TEST_P(Registers, AddWithoutCarryToTheNextLane) {
  expectElements(OF_LEVEL(sums16), [](uint16_t a, uint16_t b) { return a + b; });
  expectElements(OF_LEVEL(sums32), [](uint32_t a, uint32_t b) { return a + b; });
  expectElements(OF_LEVEL(plus700), [](uint16_t a) { return a + 700; });
}

TEST_P(Registers, TakeTheSmallerOfUnsignedSamples) {
  expectElements(OF_LEVEL(smaller16), [](uint16_t a, uint16_t b) { return std::min(a, b); });
}

TEST_P(Registers, ShiftPastTheEndToZero) {
  expectElements(OF_LEVEL(shifted<0>), [](uint16_t v) { return v; });
  expectElements(OF_LEVEL(shifted<1>), [](uint16_t v) { return v >> 1; });
  expectElements(OF_LEVEL(shifted<15>), [](uint16_t v) { return v >> 15; });
  expectElements(OF_LEVEL(shifted<16>), [](uint16_t) { return 0; });
  expectElements(OF_LEVEL(shifted<31>), [](uint16_t) { return 0; });
}

// An element here is a pair of neighbours, the first one in its low bits.
TEST_P(Registers, SumNeighbours) {
  expectElements(OF_LEVEL(byteSums), [](uint16_t pair) { return (pair & 0xFF) + (pair >> 8); });
  expectElements(OF_LEVEL(sumsOfHalves),
                 [](uint32_t pair) { return (pair >> 1 & 0x7FFF) + (pair >> 17); });
}

// Of two registers, of which each group holds `half` elements.
template <class To, class From>
void expectNarrowed(void (*narrow)(const From* a, const From* b, To* out, bool ordered),
                    size_t bytes) {
  using Limits = std::numeric_limits<To>;
  const size_t n = bytes / sizeof(From), half = 16 / sizeof(From);
  std::mt19937 random;
  const std::vector<From> a = mixed<From>(random, n), b = mixed<From>(random, n);
  const auto saturated = [](From v) {
    return static_cast<To>(std::clamp<From>(v, Limits::min(), Limits::max()));
  };
  std::vector<To> grouped(2 * n), ordered(2 * n);
  narrow(a.data(), b.data(), grouped.data(), false);
  narrow(a.data(), b.data(), ordered.data(), true);
  for (size_t i = 0; i < n; ++i) {
    EXPECT_EQ(ordered[i], saturated(a[i])) << i;
    EXPECT_EQ(ordered[n + i], saturated(b[i])) << i;
    const size_t at = i / half * 2 * half + i % half;
    EXPECT_EQ(grouped[at], saturated(a[i])) << i;
    EXPECT_EQ(grouped[at + half], saturated(b[i])) << i;
  }
}

TEST_P(Registers, PackGroupByGroupAndSaturate) {
  expectNarrowed(OF_LEVEL(narrowedToBytes), bytes_);
  expectNarrowed(OF_LEVEL(narrowedTo16Bits), bytes_);
}

}  // namespace
}  // namespace vistrel::core::test

#endif

#else
#include "common/simd/registers-inl.h"

#if VISTREL_PERMUTES

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

inline void repeatGroup(const uint8_t* p, uint8_t* out) { storeRegister(out, allGroups(p)); }
inline void joinGroups(const uint8_t* p, size_t step, uint8_t* out) {
  storeRegister(out, loadGroups(p, step));
}
inline void lastGroup(const uint8_t* p, uint8_t* out) {
  const Group last = group(loadRegister(p), kGroups - 1);
  std::memcpy(out, &last, sizeof last);
}
inline void permuted(const uint8_t* p, const uint8_t* order, uint8_t* out) {
  storeRegister(out, permute(loadRegister(p), order));
}
#if VISTREL_X86
template <int lanes>
void blended(const int16_t* a, const int16_t* b, int16_t* out) {
  storeRegister(out, blend16<lanes>(loadRegister(a), loadRegister(b)));
}
#endif

template <class T>
constexpr size_t kStep = kRegisterBytes / sizeof(T);

inline void sums16(uint16_t* out, size_t n, const uint16_t* a, const uint16_t* b) {
  for (size_t k = 0; k < n; k += kStep<uint16_t>)
    storeRegister(out + k, add16(loadRegister(a + k), loadRegister(b + k)));
}
inline void sums32(uint32_t* out, size_t n, const uint32_t* a, const uint32_t* b) {
  for (size_t k = 0; k < n; k += kStep<uint32_t>)
    storeRegister(out + k, add32(loadRegister(a + k), loadRegister(b + k)));
}
inline void plus700(uint16_t* out, size_t n, const uint16_t* a) {
  for (size_t k = 0; k < n; k += kStep<uint16_t>)
    storeRegister(out + k, add16(loadRegister(a + k), set1_16(700)));
}
inline void smaller16(uint16_t* out, size_t n, const uint16_t* a, const uint16_t* b) {
  for (size_t k = 0; k < n; k += kStep<uint16_t>)
    storeRegister(out + k, min16(loadRegister(a + k), loadRegister(b + k)));
}
template <int count>
void shifted(uint16_t* out, size_t n, const uint16_t* a) {
  for (size_t k = 0; k < n; k += kStep<uint16_t>)
    storeRegister(out + k, shiftRight16(loadRegister(a + k), shiftCount(count)));
}
inline void byteSums(uint16_t* out, size_t n, const uint16_t* pairs) {
  for (size_t k = 0; k < n; k += kStep<uint16_t>)
    storeRegister(out + k, pairSums8(loadRegister(pairs + k)));
}
// Of neighbours halved, so that they are below 32768.
inline void sumsOfHalves(uint32_t* out, size_t n, const uint32_t* pairs) {
  for (size_t k = 0; k < n; k += kStep<uint32_t>)
    storeRegister(out + k, pairSums16(shiftRight16<1>(loadRegister(pairs + k))));
}

inline void narrowedToBytes(const int16_t* a, const int16_t* b, uint8_t* out, bool ordered) {
  const Register narrow = pack16(loadRegister(a), loadRegister(b));
  storeRegister(out, ordered ? inOrder(narrow) : narrow);
}
inline void narrowedTo16Bits(const int32_t* a, const int32_t* b, int16_t* out, bool ordered) {
  const Register narrow = pack32(loadRegister(a), loadRegister(b));
  storeRegister(out, ordered ? inOrder(narrow) : narrow);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
#endif
