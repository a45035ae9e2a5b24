// Rows of a mosaic as two half rows, the even and the odd columns apart, so that a formula's
// neighbour is one unit-stride load. A short ring of them stands for the frame.
//
//   row       G R G R G R G        element   0 1 2 3
//   half 0    G   G   G   G                  G G G G
//   half 1      R   R   R                    R R R
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <type_traits>

namespace vistrel::core {

// A ring of `rows` rows of `halves` half rows each. In front of a half row lies one element of
// guard, behind it one element of guard and slack for vectors that run past the end. All starts as
// zero: what a vector computes in that slack stays among the values of samples.
template <class T>
class HalfRowRing {
 public:
  HalfRowRing(unsigned rows, unsigned halves, size_t columns)
      : rows_(rows), halves_(halves), pitch_(pitchOf(columns)),
        block_(static_cast<T*>(std::aligned_alloc(kAlign, bytes()))) {
    if (block_) std::memset(block_.get(), 0, bytes());
  }

  explicit operator bool() const { return block_ != nullptr; }

  T* half(unsigned row, unsigned which) const {
    return block_.get() + ((row % rows_) * halves_ + which) * pitch_ + kAlign / sizeof(T);
  }

 private:
  static constexpr size_t kAlign = 64;
  static constexpr size_t kMargin = 3 * kAlign / sizeof(T);  // one in front, two behind

  static size_t pitchOf(size_t columns) {
    constexpr size_t unit = kAlign / sizeof(T);
    return ((columns + 1) / 2 + kMargin + unit - 1) / unit * unit;
  }

  size_t bytes() const { return rows_ * halves_ * pitch_ * sizeof(T); }

  struct Free {
    void operator()(T* block) const { std::free(block); }
  };
  unsigned rows_, halves_;
  size_t pitch_;
  std::unique_ptr<T, Free> block_;
};

// Rows y - reach .. y + reach of a plane, each as two halves by column parity.
template <class T, int reach>
struct HalfRowWindow {
  const T* half[2 * reach + 1][2];
};

// The window round row y. half(row, parity): the half row of that column parity.
template <int reach, class HalfOf>
auto windowOf(int y, HalfOf half) {
  using T = std::remove_const_t<std::remove_pointer_t<decltype(half(0, 0u))>>;
  HalfRowWindow<T, reach> window;
  for (int dy = -reach; dy <= reach; ++dy)
    for (unsigned parity = 0; parity < 2; ++parity)
      window.half[dy + reach][parity] = half(y + dy, parity);
  return window;
}

}  // namespace vistrel::core
