// Nearest neighbours in a region of a frame: vector code makes the pixels at least two pixels
// inside the frame, the border's code makes the others.
#pragma once

#include "cfa/near/near_border.h"
#include "cfa/near/near_kernels.h"
#include "common/rows/half_rows.h"
#include "common/rows/sweep.h"
#include "cpu/level.h"

namespace vistrel::core {

template <class T>
class NearRegion {
 public:
  // roi must be clipped to the frame, with its origin inside.
  NearRegion(const CfaRows<T>& frame, CfaRect roi, Arena& arena, Level level = currentLevel());

  // Makes rows of the roi; rows are numbered as in the frame.
  auto sweep(ImageSink<T>& image, RowInterval rows) {
    return Sweep(rows, {0, frame_.size.height}, stage(0, [this](int y) { load(y); }),
                 stage(kReach, [this, &image](int y) {
                   RowSink<T> sink = image.row(y - roi_.y);
                   border(y, sink);
                   interior(y, sink);
                   image.finish(y - roi_.y, sink);
                 }));
  }

 private:
  static constexpr int kReach = NearBorder<T>::kWidth;

  bool hasInterior() const { return x0_ < x1_; }
  bool hasInterior(int y) const;
  void load(int y);
  void border(int y, RowSink<T>& sink) const;
  void interior(int y, RowSink<T>& sink) const;

  CfaRows<T> frame_;
  CfaRect roi_;
  int x0_, x1_;  // the interior's columns
  const NearKernels<T>& kernels_;
  HalfRowRing<T> ring_;
  NearBorder<T> border_;
};

// Makes all of the roi. Writes nothing if an allocation fails.
template <class T>
void makeNear(const CfaRows<T>& frame, CfaRect roi, ImageSink<T>& image, Level level) {
  withArena([&](Arena& arena) {
    NearRegion<T> region(frame, roi, arena, level);
    if (!arena.counts()) region.sweep(image, rowsOf(roi)).finish();
  });
}

}  // namespace vistrel::core
