// Interleaved triples to three vectors. The second half of this file is compiled once for each
// level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/deinterleave_test.cpp"
#include "common/simd/each_level.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Deinterleave);

template <class T>
void expectChannels() {
  const size_t n = *VISTREL_BY_LEVEL(kChannelLanes<T>);
  if (n == 0) GTEST_SKIP() << "this level has no such load";
  const std::vector<T> triples = noise<T>(3 * n, 65535, 5);
  std::vector<T> channels(3 * n), expected(3 * n);
  for (size_t i = 0; i < 3 * n; ++i) expected[i % 3 * n + i / 3] = triples[i];
  VISTREL_BY_LEVEL(storeChannels<T>)(triples.data(), channels.data());
  EXPECT_EQ(channels, expected);
}

TEST_P(Deinterleave, BytesKeepTheirOrder) { expectChannels<uint8_t>(); }
TEST_P(Deinterleave, WiderSamplesKeepTheirOrder) { expectChannels<uint16_t>(); }

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/deinterleave-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_SSSE3
template <class T>
constexpr size_t kChannelLanes = kLanes<T>;

template <class T>
void storeChannels(const T* triples, T* channels) {
  const Channels<T> c = loadChannels<T>(reinterpret_cast<const uint8_t*>(triples));
  store(channels, c.first);
  store(channels + kLanes<T>, c.second);
  store(channels + 2 * kLanes<T>, c.third);
}
#else
template <class T>
constexpr size_t kChannelLanes = 0;

template <class T>
void storeChannels(const T*, T*) {}
#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
