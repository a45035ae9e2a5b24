// A few rows of a plane of the frame as half rows. Beyond the frame, the plane is mirrored about
// its outermost rows and columns.
#pragma once

#include "common/mirror.h"
#include "common/rows/half_rows.h"

namespace vistrel::core {

struct PlaneSize {
  size_t columns;
  int height;
};

template <class Value>
class MirroredRing {
 public:
  // halves: 2, or 1 for the rows of a plane that only has values at green sites or only at the
  // other ones.
  MirroredRing(unsigned rows, unsigned halves, PlaneSize size, Arena& arena)
      : halves_(halves), size_(size), ring_(rows, halves, size.columns, arena) {}

  Value* half(int y, unsigned parity = 0) const {
    return ring_.half(static_cast<uint32_t>(mirrored(y, static_cast<size_t>(size_.height))),
                      parity & (halves_ - 1));
  }

  template <int reach>
  HalfRowWindow<Value, reach> window(int y) const {
    return windowOf<reach>(
        y, [this](int row, unsigned parity) -> const Value* { return half(row, parity); });
  }

  // Completes a half row with the columns around it.
  void mirrorEnds(int y, unsigned parity) const {
    const auto mirroredElement = [&](int64_t element) {
      return mirrored(2 * element + parity, size_.columns) / 2;
    };
    Value* const values = half(y, parity);
    const auto n = static_cast<int64_t>((size_.columns + 1 - parity) / 2);
    values[-1] = values[mirroredElement(-1)];
    values[n] = values[mirroredElement(n)];
  }
  void mirrorEnds(int y) const {
    mirrorEnds(y, 0);
    mirrorEnds(y, 1);
  }

 private:
  unsigned halves_;
  PlaneSize size_;
  HalfRowRing<Value> ring_;
};

}  // namespace vistrel::core
