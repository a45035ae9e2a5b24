// Nearest neighbours row by row: whatever lies two pixels and more inside the frame in registers,
// the rest by the border.
#pragma once

#include "cfa/frame.h"
#include "common/rows/half_rows.h"
#include "common/rows/pixel_row.h"
#include "cpu/level.h"

namespace vistrel::core {

// What each level compiles. Pixels by the rounding term of means of four.
template <class T>
struct NearKernels {
  T (*split)(const T* source, size_t pairs, T* even, T* odd);
  void (*keepBits)(T* half, size_t n, T mask);
  const PixelRows<T, HalfRowWindow<T, 2>>* pixels[3];
};

template <class T>
class NearRows {
 public:
  // srcRoi: clipped to the frame, its origin inside.
  NearRows(const CfaFrame<T>& frame, CfaRect srcRoi, Level level = currentLevel());

  explicit operator bool() const { return bool(ring_); }

  // Row y of the rectangle. Rows are to be asked for in ascending order.
  void row(int y, T* pixels, RowCopies<T>& copies);

 private:
  void load(int y);
  void interior(int y, T* pixels, RowCopies<T>& copies) const;

  CfaFrame<T> frame_;
  CfaRect roi_;
  int x0_, x1_;  // the interior's columns
  int loaded_;   // frame rows before it are in the ring, as far as they are needed
  const NearKernels<T>& kernels_;
  HalfRowRing<T> ring_;
};

}  // namespace vistrel::core
