// Adaptive homogeneity-directed demosaicing of a region. It is cut into five rectangles, of which
// each begins its running choice anew.
#pragma once

#include "cfa/ahd/choice.h"
#include "common/rows/sweep.h"
#include "cpu/level.h"

namespace vistrel::core {

constexpr int kAhdReach = 5;  // rows and columns that a pixel depends on, on either side

// Columns of a frame, row by row.
template <class T>
class AhdStrip {
 public:
  // x, width: of the strip. shift: samples are scaled up by it, and down again when stored.
  AhdStrip(const CfaFrame<T>& frame, int x, int width, int shift, Level level);

  // False if an allocation failed.
  explicit operator bool() const { return images_ && choice_; }

  // Makes a rectangle of the strip. restarts(y, choice): restarts the choice of row y.
  template <class Restarts>
  void makeInto(ImageSink<T>& image, CfaRect rect, Restarts restarts) {
    sweep({rect.y, rect.y + rect.height}, kUnbounded, stage(0, [&](int y) { images_.load(y); }),
          stage(2, [&](int y) { images_.fillGreen(y); }),
          stage(1, [&](int y) { images_.fillColours(y); }),
          stage(1, [&](int y) { choice_.score(y); }), stage(1, [&](int y) {
            choice_.sum(y);
            restarts(y, choice_);
            RowSink<T> sink = image.row(y - rect.y);
            store(y, rect.x, rect.x + rect.width, sink);
            image.finish(y - rect.y, sink);
          }));
  }

 private:
  void store(int y, int x, int xEnd, RowSink<T>& sink);

  int first_;  // the column of element 0 of the even halves
  int shift_;
  const AhdKernels<T>& kernels_;
  AhdReconstruction<T> images_;
  AhdChoice<T> choice_;
};

// Where the rectangles meet. The inner one has a margin of the reach to the frame's edges, begins
// at a red site and has even sides; above and below it lie bands of the region's width, beside it
// the left and the right band.
struct AhdBoundaries {
  int x0, y0, xEnd, yEnd;  // the inner rectangle; its size may be negative
};

template <class T>
class AhdRegion {
 public:
  // roi: clipped to the frame, not empty.
  AhdRegion(const CfaFrame<T>& frame, CfaRect roi, int shift = 0, Level level = currentLevel());

  // False if an allocation failed.
  explicit operator bool() const { return bool(strip_); }

  void makeInto(ImageSink<T>& image);

 private:
  bool besideInner(int y) const { return inner_.y0 <= y && y < inner_.yEnd; }
  int left() const;
  int end() const { return roi_.x + roi_.width; }

  CfaRect roi_;
  AhdBoundaries inner_;
  AhdStrip<T> strip_;
};

}  // namespace vistrel::core
