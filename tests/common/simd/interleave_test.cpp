// Six half rows to pixels. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/interleave_test.cpp"
#include "common/simd/each_level.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Interleave);

// A row of 2 n pixels, n being a vector's lanes. halves: by colour, then by column parity.
template <class T>
struct Row {
  const size_t n = *VISTREL_BY_LEVEL(kLanes<T>);
  const std::vector<T> pixels = noise<T>(6 * n, 65535, 1);
  std::vector<T> halves[3][2];

  Row() {
    for (size_t x = 0; x < 2 * n; ++x)
      for (size_t c = 0; c < 3; ++c) halves[c][x % 2].push_back(pixels[3 * x + c]);
  }
  void store(T* d, T* copy) const {
    const auto& [b, g, r] = halves;
    VISTREL_BY_LEVEL(pixelsOfHalves<T>)
    ({b[0].data(), b[1].data(), g[0].data(), g[1].data(), r[0].data(), r[1].data()}, d, copy);
  }
};

template <class T>
void expectPixels() {
  const Row<T> row;
  Canvas<T> alone(6 * row.n), both(6 * row.n), copy(6 * row.n);
  row.store(alone.data(), nullptr);
  EXPECT_EQ(alone.samples(), row.pixels);
  row.store(both.data(), copy.data());
  EXPECT_EQ(both.samples(), row.pixels);
  EXPECT_EQ(copy.samples(), row.pixels);
}

TEST_P(Interleave, StoresBlueGreenRedOfEveryColumn) {
  expectPixels<uint8_t>();
  expectPixels<uint16_t>();
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/interleave-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
void pixelsOfHalves(const T* const (&halves)[6], T* d, T* copy) {
  storePixels<T>(d, copy, {load(halves[0]), load(halves[1])}, {load(halves[2]), load(halves[3])},
                 {load(halves[4]), load(halves[5])});
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
