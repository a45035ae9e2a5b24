// The ways of widening samples. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/widen_test.cpp"
#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Widen);

// load: stores the parts of the samples at p, one after the other. placeOf(i, k): the sample that
// is element k of part i; of n samples.
template <class T, class Element, class PlaceOf>
void expectParts(void (*load)(const T* p, Element* parts), size_t parts, PlaceOf placeOf) {
  const size_t n = *VISTREL_BY_LEVEL(kLanes<T>);
  std::mt19937 random;
  const std::vector<T> samples = mixed<T>(random, n + 1);
  std::vector<Element> loaded(n);
  load(samples.data() + 1, loaded.data());
  for (size_t i = 0; i < parts; ++i)
    for (size_t k = 0; k < n / parts; ++k)
      EXPECT_EQ(loaded[i * n / parts + k], static_cast<Element>(samples[1 + placeOf(i, k, n)]))
          << "element " << k << " of part " << i;
}

// join: makes the parts that `load` stores samples again.
template <class T, class Element>
void expectJoined(void (*load)(const T* p, Element* parts),
                  void (*join)(const Element* parts, T* p)) {
  std::mt19937 random;
  const std::vector<T> samples = mixed<T>(random, *VISTREL_BY_LEVEL(kLanes<T>));
  std::vector<Element> parts(samples.size());
  std::vector<T> joined(samples.size());
  load(samples.data(), parts.data());
  join(parts.data(), joined.data());
  EXPECT_EQ(joined, samples);
}

template <class T>
void expectLowHigh() {
  const auto load = VISTREL_BY_LEVEL(loadLowHigh<T>);
  expectParts(load, 2, [](size_t i, size_t k, size_t n) { return i * n / 2 + k; });
  expectJoined(load, VISTREL_BY_LEVEL(joinLowHigh<T>));
}

TEST_P(Widen, LowHighTakesOneHalfAfterTheOther) {
  expectLowHigh<uint8_t>();
  expectLowHigh<uint16_t>();
}

template <class T>
void expectEvenOdd() {
  const auto load = VISTREL_BY_LEVEL(loadEvenOdd<T>);
  expectParts(load, 2, [](size_t i, size_t k, size_t) { return 2 * k + i; });
  expectJoined(load, VISTREL_BY_LEVEL(joinEvenOdd<T>));
}

TEST_P(Widen, EvenOddTakesElementsByTheirParity) {
  expectEvenOdd<uint8_t>();
  expectEvenOdd<uint16_t>();
}

TEST_P(Widen, AsSignedLeavesTheBitsAsTheyAre) {
  const auto load = VISTREL_BY_LEVEL(loadSigned<uint16_t>);
  expectParts(load, 1, [](size_t, size_t k, size_t) { return k; });
  expectJoined(load, VISTREL_BY_LEVEL(joinSigned<uint16_t>));
}

TEST_P(Widen, AsDoubleTakesEachPlaceOf32Bits) {
  expectParts(VISTREL_BY_LEVEL(loadDoubles<uint8_t>), 4,
              [](size_t i, size_t k, size_t) { return 4 * k + i; });
  expectParts(VISTREL_BY_LEVEL(loadDoubles<uint16_t>), 2,
              [](size_t i, size_t k, size_t) { return 2 * k + i; });
}

// Joined with the limit 200.
template <class T>
void expectLimited(size_t parts) {
  const size_t n = *VISTREL_BY_LEVEL(kLanes<T>);
  const double values[] = {0, 0.99, 1, 57.5, 199.999, 200, 200.5, 256, 65536, 2147483647};
  const T expected[] = {0, 0, 1, 57, 199, 200, 200, 200, 200, 200};
  std::vector<double> doubles(n);
  for (size_t i = 0; i < n; ++i) doubles[i] = values[i % 10];
  std::vector<T> joined(n);
  VISTREL_BY_LEVEL(joinDoubles<T>)(doubles.data(), joined.data());
  for (size_t i = 0; i < n; ++i)  // element i of the doubles belongs to part i / (n / parts)
    EXPECT_EQ(joined[i % (n / parts) * parts + i / (n / parts)], expected[i % 10]) << doubles[i];
}

TEST_P(Widen, DoublesAreTruncatedAndLimited) {
  expectLimited<uint8_t>(4);
  expectLimited<uint16_t>(2);
}

TEST_P(Widen, DoublesBecomeIntegersTowardZero) {
  expectElements(VISTREL_BY_LEVEL(halvedAsDoubles), [](int32_t v) { return v / 2; });
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class Values, class Element>
void storeParts(const typename Values::Sample* p, Element* parts) {
  for (size_t i = 0; i < Values::kParts; ++i) {
    const typename Values::Value part = Values::load(p, i);
    std::memcpy(parts + i * sizeof part / sizeof(Element), &part, sizeof part);
  }
}
template <class Values, class Element>
void storeJoined(const Element* from, typename Values::Sample* p) {
  typename Values::Value parts[Values::kParts];
  std::memcpy(&parts, from, sizeof parts);
  store(p, Values::join(parts));
}

template <class T>
void loadLowHigh(const T* p, Widened<T>* parts) {
  storeParts<LowHigh<T>>(p, parts);
}
template <class T>
void joinLowHigh(const Widened<T>* parts, T* p) {
  storeJoined<LowHigh<T>>(parts, p);
}
template <class T>
void loadEvenOdd(const T* p, Widened<T>* parts) {
  storeParts<EvenOdd<T>>(p, parts);
}
template <class T>
void joinEvenOdd(const Widened<T>* parts, T* p) {
  storeJoined<EvenOdd<T>>(parts, p);
}
template <class T>
void loadSigned(const T* p, std::make_signed_t<T>* parts) {
  storeParts<AsSigned<T>>(p, parts);
}
template <class T>
void joinSigned(const std::make_signed_t<T>* parts, T* p) {
  storeJoined<AsSigned<T>>(parts, p);
}

template <class T>
void loadDoubles(const T* p, double* parts) {
  for (size_t i = 0; i < AsDouble<T>::kParts; ++i) {
    const Doubles part = AsDouble<T>::part(load(p), i);
    std::memcpy(parts + i * sizeof part / sizeof(double), &part, sizeof part);
  }
}
template <class T>
void joinDoubles(const double* from, T* p) {
  Doubles parts[AsDouble<T>::kParts];
  std::memcpy(&parts, from, sizeof parts);
  store(p, AsDouble<T>::join(parts, 200));
}
inline void halvedAsDoubles(int32_t* out, size_t n, const int32_t* a) {
  for (size_t k = 0; k < n; k += kLanes<int32_t>)
    store(out + k, toIntegers(toDoubles(load(a + k)) / 2));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
