// Sums of products. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/pairs_test.cpp"
#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/common/simd/levels_above_base.h"

#ifdef OF_LEVEL

namespace vistrel::core::test {
namespace {

class Products : public AtEveryLevel {};
INSTANTIATE_TEST_SUITE_P(Every, Products, ::testing::ValuesIn(levelsAboveBase()),
                         ::testing::PrintToStringParamName());

TEST_P(Products, OfBytesAddInOrder) {
  expectElements(OF_LEVEL(weightedBytes),
                 [](uint8_t a, uint8_t b) { return 3 * (a & 63) + (b & 63); });
  expectElements(OF_LEVEL(differences),
                 [](uint8_t a, uint8_t b) { return (b & 63) + 64 - (a & 63); });
}

TEST_P(Products, OfSamplesAddInOrder) {
  expectElements(OF_LEVEL(weightedSamples),
                 [](uint16_t a, uint16_t b) { return 20 * (a & 1023) + 11 * (b & 1023); });
}

}  // namespace
}  // namespace vistrel::core::test

#endif

#else
#include "common/simd/pairs-inl.h"

#if VISTREL_PERMUTES

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <int a, int b>
Vec<uint8_t> sumOf(Vec<uint8_t> v, Vec<uint8_t> w) {
  const Pairs<uint8_t> pairs = pairsOf(v, w);
  return narrowed(weighted<a, b>(pairs.lower), weighted<a, b>(pairs.upper));
}

// With operands whose results fit.
inline void weightedBytes(uint8_t* out, size_t n, const uint8_t* a, const uint8_t* b) {
  for (size_t k = 0; k < n; k += kLanes<uint8_t>)
    store(out + k, sumOf<3, 1>(load(a + k) & 63, load(b + k) & 63));
}
inline void differences(uint8_t* out, size_t n, const uint8_t* a, const uint8_t* b) {
  for (size_t k = 0; k < n; k += kLanes<uint8_t>)
    store(out + k, sumOf<-1, 1>(load(a + k) & 63, (load(b + k) & 63) + 64));
}
inline void weightedSamples(uint16_t* out, size_t n, const uint16_t* a, const uint16_t* b) {
  const auto sums = [](Vec<uint16_t> pairs) { return weighted<20, 11>(as<Vec<int16_t>>(pairs)); };
  for (size_t k = 0; k < n; k += kLanes<uint16_t>) {
    const Pairs<uint16_t> pairs = pairsOf(load(a + k) & 1023, load(b + k) & 1023);
    store(out + k, narrowed(sums(pairs.lower), sums(pairs.upper)));
  }
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
#endif
