// The border of a region of nearest neighbours, from rows that come one after the other.
#pragma once

#include "cfa/border.h"
#include "common/rows/arena.h"

namespace vistrel::core {

template <class T>
class NearBorder {
 public:
  static constexpr int kWidth = 2;  // rows and columns along the frame's edges

  NearBorder(const CfaRows<T>& frame, CfaRect roi, Arena& arena);

  void load(int y, const T* row);

  // Writes what of row y belongs to the border; the rows beside it are loaded.
  void write(int y, T* pixels) const;

 private:
  static constexpr int kLines = 3;  // that a strip reads

  bool atTop(int y) const { return y < kWidth; }
  bool atBottom(int y) const { return y >= frame_.size.height - kWidth; }
  void writeSides(int y, T* pixels) const;

  // Columns of the rows y - 1 .. y + 1: the first three, or the last three.
  struct Patch {
    T samples[kLines * kLines];
  };
  Patch patch(int y, unsigned side) const;

  CfaRows<T> frame_;
  CfaRect roi_;
  T *top_, *bottom_;               // the frame's first and last three rows
  T ends_[kLines + 1][2][kLines];  // of the last rows
};

}  // namespace vistrel::core
