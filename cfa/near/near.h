// Nearest neighbours of a region of a frame: whatever lies two pixels and more inside the frame by
// vector code, the rest by the border.
#pragma once

#include "cfa/frame.h"
#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"
#include "common/rows/row_source.h"
#include "cpu/level.h"

namespace vistrel::core {

// What each level compiles. Pixels by the rounding term of means of four.
template <class T>
struct NearKernels {
  void (*split)(const T* source, size_t columns, T* even, T* odd);
  void (*keepBits)(T* half, size_t n, T mask);
  const PixelKernels<T, HalfRowWindow<T, 2>>* pixels[3];
};

template <class T>
class NearRegion {
 public:
  // roi: clipped to the frame, its origin inside.
  NearRegion(const CfaFrame<T>& frame, CfaRect roi, Level level = currentLevel());

  // False if an allocation failed.
  explicit operator bool() const { return bool(ring_); }

  void makeInto(ImageSink<T>& image);

 private:
  bool hasInterior() const { return x0_ < x1_; }
  bool hasInterior(int y) const;
  void load(int y);
  void border(int y, RowSink<T>& sink) const;
  void interior(int y, RowSink<T>& sink) const;

  CfaFrame<T> frame_;
  RowSource<T> source_;
  CfaRect roi_;
  int x0_, x1_;  // the interior's columns
  const NearKernels<T>& kernels_;
  HalfRowRing<T> ring_;
};

}  // namespace vistrel::core
