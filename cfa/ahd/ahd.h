// Adaptive homogeneity-directed demosaicing of a region. It is cut into five rectangles, of which
// each begins its running choice anew.
#pragma once

#include "cfa/ahd/ahd_rows.h"

namespace vistrel::core {

// Where the rectangles meet. The inner one has a margin of the reach to the frame's edges, begins
// at a red site and has even sides; above and below it lie bands of the region's width, beside it
// the left and the right band.
struct AhdSeams {
  int x0, y0, xEnd, yEnd;  // the inner rectangle; its size may be negative
};

template <class T>
class AhdRegion {
 public:
  // roi: clipped to the frame, not empty. shift: samples are scaled up by it, and down again.
  AhdRegion(const CfaFrame<T>& frame, CfaRect roi, int shift = 0, Level level = currentLevel());

  explicit operator bool() const { return bool(rows_); }

  // Row y of the region. Rows are to be asked for in ascending order.
  void row(int y, T* pixels, RowCopies<T>& copies);

 private:
  bool besideInner(int y) const { return seams_.y0 <= y && y < seams_.yEnd; }
  CfaRect strip() const;

  CfaRect roi_;
  AhdSeams seams_;
  AhdRows<T> rows_;
};

}  // namespace vistrel::core
