// Upper bits of products. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/products_test.cpp"
#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(UpperBits);

TEST_P(UpperBits, OfUnsignedProducts) {
  expectElements(VISTREL_BY_LEVEL(upperProducts),
                 [](uint16_t a, uint16_t b) { return uint32_t{a} * b >> 16; });
}

// Half of a, since both must not be -2^15.
TEST_P(UpperBits, OfSignedProductsAreRounded) {
  expectElements(VISTREL_BY_LEVEL(roundedProducts),
                 [](int16_t a, int16_t b) { return ((a >> 1) * b + 16384) >> 15; });
}

TEST_P(UpperBits, OfProductsByOneNumber) {
  expectElements(VISTREL_BY_LEVEL(upperProductsByOne), [](uint16_t v) { return v * 50000u >> 16; });
  expectElements(VISTREL_BY_LEVEL(roundedProductsByOne),
                 [](int16_t v) { return (v * 20000 + 16384) >> 15; });
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/products-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

inline void upperProducts(uint16_t* out, size_t n, const uint16_t* a, const uint16_t* b) {
  for (size_t k = 0; k < n; k += kLanes<uint16_t>)
    store(out + k, upperProduct(load(a + k), load(b + k)));
}
inline void roundedProducts(int16_t* out, size_t n, const int16_t* a, const int16_t* b) {
  for (size_t k = 0; k < n; k += kLanes<int16_t>)
    store(out + k, roundedProduct(load(a + k) >> 1, load(b + k)));
}

inline void upperProductsByOne(uint16_t* out, size_t n, const uint16_t* v) {
  for (size_t k = 0; k < n; k += kLanes<uint16_t>) store(out + k, upperProduct(load(v + k), 50000));
}
inline void roundedProductsByOne(int16_t* out, size_t n, const int16_t* v) {
  for (size_t k = 0; k < n; k += kLanes<int16_t>)
    store(out + k, roundedProduct(load(v + k), 20000));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
