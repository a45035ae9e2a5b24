// Adaptive homogeneity-directed demosaicing of a region. The region is cut into five rectangles;
// each restarts its running choice.
#pragma once

#include "cfa/ahd/choice.h"
#include "common/rows/sweep.h"
#include "cpu/level.h"

namespace vistrel::core {

constexpr int kAhdReach = 5;  // rows and columns on each side that a pixel depends on

struct AhdSettings {
  int shift = 0;         // scales samples up, and back down when they are stored
  bool redLast = false;  // in a pixel; otherwise red is the first sample
  Level level = currentLevel();
};

// Columns of a frame, converted row by row.
template <class T>
class AhdStrip {
 public:
  // x, width: the strip's columns.
  AhdStrip(const CfaRows<T>& frame, int x, int width, const AhdSettings& settings, Arena& arena);

  // Makes rows of a rectangle of the strip. restart(y, choice) restarts the choice of row y.
  template <class Restart>
  auto sweep(ImageSink<T>& image, CfaRect rect, RowInterval rows, Restart restart) {
    return Sweep(rows, kUnbounded, stage(0, [this](int y) { images_.load(y); }),
                 stage(2, [this](int y) { images_.fillGreen(y); }),
                 stage(1, [this](int y) { images_.fillColours(y); }),
                 stage(1, [this](int y) { choice_.score(y); }),
                 stage(1, [this, &image, rect, restart](int y) {
                   choice_.sum(y);
                   restart(y, choice_);
                   RowSink<T> sink = image.row(y - rect.y);
                   store(y, rect.x, rect.x + rect.width, sink);
                   image.finish(y - rect.y, sink);
                 }));
  }

 private:
  void store(int y, int x, int xEnd, RowSink<T>& sink);

  int first_;  // the column of element 0 of the even halves
  int shift_;
  bool redLast_;
  const AhdKernels<T>& kernels_;
  AhdReconstruction<T> images_;
  AhdChoice<T> choice_;
};

// The boundaries of the rectangles. The inner one stays kAhdReach away from the frame's edges,
// begins at a red site and has even sides. Above and below it lie bands of the region's width, on
// its sides the left and the right band.
struct AhdBoundaries {
  int x0, y0, xEnd, yEnd;  // the inner rectangle; its size may be negative
};

template <class T>
class AhdRegion {
 public:
  // roi must be clipped to the frame and not empty.
  AhdRegion(const CfaRows<T>& frame, CfaRect roi, const AhdSettings& settings, Arena& arena);

  // Makes rows of the roi; rows are numbered as in the frame.
  auto sweep(ImageSink<T>& image, RowInterval rows) {
    return strip_.sweep(image, roi_, rows,
                        [this](int y, const AhdChoice<T>& choice) { restart(y, choice); });
  }

 private:
  void restart(int y, const AhdChoice<T>& choice) const;
  bool besideInner(int y) const { return inner_.y0 <= y && y < inner_.yEnd; }
  int left() const;
  int end() const { return roi_.x + roi_.width; }

  CfaRect roi_;
  AhdBoundaries inner_;
  AhdStrip<T> strip_;
};

}  // namespace vistrel::core
