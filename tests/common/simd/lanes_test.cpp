// Exact operations lane by lane. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/lanes_test.cpp"
#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Lanes);

TEST_P(Lanes, FillAVector) {
  EXPECT_EQ(*VISTREL_BY_LEVEL(kLanes<uint8_t>), *VISTREL_BY_LEVEL(kVectorBytes));
  EXPECT_EQ(*VISTREL_BY_LEVEL(kLanes<int16_t>), *VISTREL_BY_LEVEL(kVectorBytes) / 2);
  EXPECT_EQ(*VISTREL_BY_LEVEL(kLanes<double>), *VISTREL_BY_LEVEL(kVectorBytes) / 8);
}

TEST_P(Lanes, AreLoadedAndStoredAtAnyAddress) {
  std::vector<uint8_t> source = noise<uint8_t>(80, 255, 1), copy(81);
  for (size_t shift = 0; shift < 16; ++shift) {
    VISTREL_BY_LEVEL(copyVector<uint8_t>)(source.data() + shift, copy.data() + 1);
    const auto end = copy.begin() + 1 + static_cast<ptrdiff_t>(*VISTREL_BY_LEVEL(kVectorBytes));
    EXPECT_TRUE(std::equal(copy.begin() + 1, end, source.begin() + static_cast<ptrdiff_t>(shift)));
    EXPECT_EQ(std::count(end, copy.end(), 0), copy.end() - end);
    std::fill(copy.begin(), copy.end(), 0);
  }
}

template <class T>
void expectMeans() {
  expectElements(VISTREL_BY_LEVEL(roundedMeans<T>),
                 [](unsigned a, unsigned b) { return (a + b + 1) / 2; });
  expectElements(VISTREL_BY_LEVEL(means2<T>), [](unsigned a, unsigned b) { return (a + b) / 2; });
  expectElements(VISTREL_BY_LEVEL(means4<T>), [](unsigned a, unsigned b, unsigned c, unsigned d) {
    return (a + b + c + d) / 4;
  });
}

TEST_P(Lanes, HaveExactMeans) {
  expectMeans<uint8_t>();
  expectMeans<uint16_t>();
}

template <class T>
void expectChoices() {
  expectElements(VISTREL_BY_LEVEL(selected<T>), [](T a, T b, T c, T d) { return a < b ? c : d; });
  expectElements(VISTREL_BY_LEVEL(smallerOnes<T>), [](T a, T b) { return std::min(a, b); });
  expectElements(VISTREL_BY_LEVEL(largerOnes<T>), [](T a, T b) { return std::max(a, b); });
  expectElements(VISTREL_BY_LEVEL(clamped<T>), [](T v) { return std::clamp(v, T{0}, T{99}); });
}

TEST_P(Lanes, AreChosenAndClampedEachForItself) {
  expectChoices<uint8_t>();
  expectChoices<uint16_t>();
  expectChoices<int16_t>();
  expectChoices<int32_t>();
}

TEST_P(Lanes, HaveAbsoluteValues) {
  const auto plain = [](int v) { return std::abs(v / 2); };
  expectElements(VISTREL_BY_LEVEL(absolutes<int16_t>), plain);
  expectElements(VISTREL_BY_LEVEL(absolutes<int32_t>), plain);
}

TEST(LanesFormulas, ServeSingleSamples) {
  EXPECT_EQ(base::mean2(7, 10), 8);
  EXPECT_EQ(base::mean2(-7, 4), -2);  // down
  EXPECT_EQ(base::mean4(1, 2, 3, 5), 2);
  EXPECT_EQ(base::mean4(-1, 0, 0, 0), -1);
  EXPECT_EQ(base::clampTo(-1, 255), 0);
  EXPECT_EQ(base::clampTo(256, 255), 255);
  EXPECT_EQ(base::clampTo(77, 255), 77);
  EXPECT_EQ(base::absolute(-3), 3);
  EXPECT_EQ(base::select(1 < 2, 3, 4), 3);
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
void copyVector(const T* from, T* to) {
  store(to, load(from));
}

template <class T>
void roundedMeans(T* out, size_t n, const T* a, const T* b) {
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, roundedMean(load(a + k), load(b + k)));
}
template <class T>
void means2(T* out, size_t n, const T* a, const T* b) {
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, mean2(load(a + k), load(b + k)));
}
template <class T>
void means4(T* out, size_t n, const T* a, const T* b, const T* c, const T* d) {
  for (size_t k = 0; k < n; k += kLanes<T>)
    store(out + k, mean4(load(a + k), load(b + k), load(c + k), load(d + k)));
}

template <class T>
void selected(T* out, size_t n, const T* a, const T* b, const T* c, const T* d) {
  for (size_t k = 0; k < n; k += kLanes<T>)
    store(out + k, select(load(a + k) < load(b + k), load(c + k), load(d + k)));
}
template <class T>
void smallerOnes(T* out, size_t n, const T* a, const T* b) {
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, smaller(load(a + k), load(b + k)));
}
template <class T>
void largerOnes(T* out, size_t n, const T* a, const T* b) {
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, larger(load(a + k), load(b + k)));
}
template <class T>
void clamped(T* out, size_t n, const T* a) {
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, clampTo(load(a + k), 99));
}
template <class T>
void absolutes(T* out, size_t n, const T* a) {
  for (size_t k = 0; k < n; k += kLanes<T>) store(out + k, absolute(load(a + k) / 2));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
