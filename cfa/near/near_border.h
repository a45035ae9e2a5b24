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

  const T* lastLines(int n) const { return bottom_ + ptrdiff_t{kLines - n} * frame_.size.width; }
  void writeSides(int y, T* pixels) const;

  CfaRows<T> frame_;
  CfaRect roi_;
  T *top_, *bottom_;  // the frame's first and last three rows
  // Both ends of the last rows, each row twice, so that any three rows in turn lie side by side.
  static constexpr unsigned kEnds = 4;
  T ends_[2][2 * kEnds][kLines] = {};
};

}  // namespace vistrel::core
