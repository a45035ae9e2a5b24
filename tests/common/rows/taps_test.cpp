// A formula's neighbours. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/rows/taps_test.cpp"
#include "common/rows/half_rows.h"
#include "common/simd/each_level.h"
#include "tests/arena.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Taps);

constexpr int kReach = 2, kRows = 2 * kReach + 1, kColumns = 300;

// Five rows, and a window round the middle one.
template <class T>
class Frame {
 public:
  Frame() {
    for (int y = 0; y < kRows; ++y)
      for (int x = 0; x < kColumns; ++x) ring_.half(unsigned(y), unsigned(x % 2))[x / 2] = at(x, y);
  }
  T at(int x, int y) const { return samples_[static_cast<size_t>(y * kColumns + x)]; }
  HalfRowWindow<T, kReach> window() const {
    return windowOf<kReach>(
        kReach, [this](int y, unsigned p) -> const T* { return ring_.half(unsigned(y), p); });
  }

 private:
  const std::vector<T> samples_ = noise<T>(kRows * kColumns, 65535, 1);
  Memory memory_;
  const HalfRowRing<T> ring_{kRows, 2, kColumns, memory_};
};

constexpr int kFirst = 3;  // the element that the taps begin at

// taps: stores the neighbours' vectors, row by row, of the sites of one column parity.
template <class T, class Element>
void expectNeighbours(void (*taps)(const HalfRowWindow<T, kReach>&, int parity, size_t k,
                                   Element* out)) {
  const Frame<T> frame;
  const size_t lanes = *VISTREL_BY_LEVEL(kVectorBytes) / sizeof(Element);
  std::vector<Element> out(kRows * kRows * lanes);
  for (int parity = 0; parity < 2; ++parity) {
    taps(frame.window(), parity, kFirst, out.data());
    const Element* next = out.data();
    for (int dy = -kReach; dy <= kReach; ++dy)
      for (int dx = -kReach; dx <= kReach; ++dx)
        for (size_t i = 0; i < lanes; ++i) {
          const int site = 2 * (kFirst + static_cast<int>(i)) + parity;
          ASSERT_EQ(*next++, frame.at(site + dx, kReach + dy)) << dx << ' ' << dy << ' ' << i;
        }
  }
}

TEST_P(Taps, LieDxColumnsAndDyRowsFromTheirSites) {
  expectNeighbours(VISTREL_BY_LEVEL(samplesAround<uint8_t>));
  expectNeighbours(VISTREL_BY_LEVEL(samplesAround<uint16_t>));
}

TEST_P(Taps, LoadValuesOfOnePart) {
  expectNeighbours(VISTREL_BY_LEVEL(valuesAround<uint8_t>));
  expectNeighbours(VISTREL_BY_LEVEL(valuesAround<uint16_t>));
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/rows/taps-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class M, class Element>
void storeAround(const M& m, Element* out) {
  for (int dy = -2; dy <= 2; ++dy)
    for (int dx = -2; dx <= 2; ++dx, out += kLanes<Element>) store(out, m(dx, dy));
}
template <class T>
void samplesAround(const HalfRowWindow<T, 2>& window, int parity, size_t k, T* out) {
  if (parity == 0)
    storeAround(Tap<T, 2, 0>(window, k), out);
  else
    storeAround(Tap<T, 2, 1>(window, k), out);
}
template <class T>  // of the lower half of the samples
void valuesAround(const HalfRowWindow<T, 2>& window, int parity, size_t k, Widened<T>* out) {
  if (parity == 0)
    storeAround(ValueTap<LowHigh<T>, 2, 0>(window, k, {0}), out);
  else
    storeAround(ValueTap<LowHigh<T>, 2, 1>(window, k, {0}), out);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
