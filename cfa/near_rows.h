// Nearest neighbours row by row: whatever lies two pixels and more inside the frame in registers,
// the rest by the border.
#pragma once

#include "cfa/frame.h"
#include "common/half_rows.h"
#include "common/level.h"
#include "common/pixel_row.h"

namespace vistrel {

// What each level compiles. Pixels by the rounding term of means of four.
template <class T>
struct NearKernels {
  void (*split)(const T* source, size_t pairs, T* even, T* odd);
  void (*keepBits)(T* half, size_t n, T mask);
  const PixelRows<T, HalfRowWindow<T, 2>>* pixels[3];
};

template <class T>
class NearRows {
 public:
  // srcRoi: clipped to the frame, its origin inside.
  NearRows(const CfaFrame<T>& frame, CfaRect srcRoi, Level level = currentLevel());

  explicit operator bool() const { return bool(m_ring); }

  // Row y of the rectangle. Rows are to be asked for in ascending order.
  void row(int y, T* pixels, RowCopies<T>& copies);

 private:
  void load(int y);
  void interior(int y, T* pixels, RowCopies<T>& copies) const;

  CfaFrame<T> m_frame;
  CfaRect m_roi;
  int m_x0, m_x1;  // the interior's columns
  int m_loaded;    // frame rows before it are in the ring, as far as they are needed
  const NearKernels<T>& m_kernels;
  HalfRowRing<T> m_ring;
};

}  // namespace vistrel
