// The border of a region of nearest neighbours, from rows that arrive one after the other.
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

  // Writes the border pixels of row y, after the rows next to it have been loaded.
  void write(int y, T* pixels) const;

 private:
  static constexpr int kLines = 3;  // lines that a strip reads

  bool atTop(int y) const { return y < kWidth; }
  bool atBottom(int y) const { return y >= frame_.size.height - kWidth; }
  void writeSides(int y, T* pixels) const;

  // The first three or the last three columns of rows y - 1 .. y + 1.
  struct Patch {
    T samples[kLines * kLines];
  };
  Patch patch(int y, unsigned side) const;

  CfaRows<T> frame_;
  CfaRect roi_;
  T *top_, *bottom_;               // the frame's first and last three rows
  T ends_[kLines + 1][2][kLines];  // both ends of the last rows
};

}  // namespace vistrel::core
