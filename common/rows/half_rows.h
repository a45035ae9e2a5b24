// Rows of a mosaic, each split into two half rows, the even and the odd columns, so that a formula
// loads every neighbour with unit stride. A ring of a few rows takes the place of the frame.
//
//   row       G R G R G R G        element   0 1 2 3
//   half 0    G   G   G   G                  G G G G
//   half 1      R   R   R                    R R R
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "common/rows/arena.h"
#include "common/uint128.h"

namespace vistrel::core {

// A ring of `rows` rows of `halves` half rows each. A guard element precedes each half row. Another
// one follows it, and then slack for vectors that run past the end. Everything starts as zero, so
// that whatever a vector computes in the slack stays in the range of samples.
template <class T>
class HalfRowRing {
 public:
  HalfRowRing(unsigned rows, unsigned halves, size_t columns, Arena& arena)
      : rows_(rows), halves_(halves), reciprocal_(~uint64_t{0} / rows + 1),
        pitch_(pitchOf(columns)), block_(arena.take<T>(rows_ * halves_ * pitch_)) {
    if (block_) std::fill_n(block_, rows_ * halves_ * pitch_, T{0});
  }

  // Of any row.
  T* half(unsigned row, unsigned which) const { return at(placeOf(row), which); }
  // place: less than `rows`.
  T* at(size_t place, unsigned which) const {
    return block_ + (place * halves_ + which) * pitch_ + kAlign / sizeof(T);
  }

 private:
  static constexpr size_t kAlign = Arena::kAlign;
  static constexpr size_t kMargin = 3 * kAlign / sizeof(T);  // one in front, two behind

  // row % rows_ without a division: windows look up ten rows for each row that they make. See
  // Lemire, Kaser and Kurz, Faster remainder by direct computation (2019).
  size_t placeOf(uint32_t row) const {
    return static_cast<size_t>(Uint128{reciprocal_ * row} * rows_ >> 64);
  }

  static size_t pitchOf(size_t columns) {
    constexpr size_t unit = kAlign / sizeof(T);
    return ((columns + 1) / 2 + kMargin + unit - 1) / unit * unit;
  }

  unsigned rows_, halves_;
  uint64_t reciprocal_;
  size_t pitch_;
  T* block_;  // null while memory is only counted
};

// Rows y - reach .. y + reach of a plane, each as two halves by column parity.
template <class T, int reach>
struct HalfRowWindow {
  const T* half[2 * reach + 1][2];
};

// The window around row y. half(row, parity) returns the half row of that column parity.
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
