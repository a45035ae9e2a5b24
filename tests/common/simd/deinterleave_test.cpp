// Pixels of three samples to a vector of each. The second half of this file is compiled once for
// each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/deinterleave_test.cpp"
#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/common/simd/levels_above_base.h"

#ifdef OF_LEVEL

namespace vistrel::core::test {
namespace {

class Deinterleave : public AtEveryLevel {};
INSTANTIATE_TEST_SUITE_P(Every, Deinterleave, ::testing::ValuesIn(levelsAboveBase()),
                         ::testing::PrintToStringParamName());

template <class T>
void expectChannels(void (*load)(const uint8_t* p, T* first, T* second, T* third)) {
  const size_t n = *OF_LEVEL(kLanes<T>);
  std::mt19937 random;
  const std::vector<T> pixels = mixed<T>(random, 3 * n);
  std::vector<T> channels[3] = {std::vector<T>(n), std::vector<T>(n), std::vector<T>(n)};
  load(reinterpret_cast<const uint8_t*>(pixels.data()), channels[0].data(), channels[1].data(),
       channels[2].data());
  for (size_t x = 0; x < n; ++x)
    for (size_t c = 0; c < 3; ++c) EXPECT_EQ(channels[c][x], pixels[3 * x + c]) << x << ' ' << c;
}

TEST_P(Deinterleave, SeparatesTheSamplesOfPixels) {
  expectChannels<uint8_t>(OF_LEVEL(channelsAt<uint8_t>));
  expectChannels<uint16_t>(OF_LEVEL(channelsAt<uint16_t>));
}

}  // namespace
}  // namespace vistrel::core::test

#endif

#else
#include "common/simd/deinterleave-inl.h"

#if VISTREL_PERMUTES

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
void channelsAt(const uint8_t* p, T* first, T* second, T* third) {
  const Channels<T> channels = loadChannels<T>(p);
  store(first, channels.first);
  store(second, channels.second);
  store(third, channels.third);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
#endif
