// The shape that the algorithms of the guarded layout share: spread the mosaic, fill the missing
// colours, convert. One sweep does all three, a row at a time.
#pragma once

#include <algorithm>

#include "common/rows/pixel_kernels.h"
#include "common/rows/sweep.h"
#include "demosaic/mosaic_ring.h"
#include "demosaic/work_image.h"

namespace vistrel::core {

// Writes the guard from the mosaic as it was spread, before any colour is filled in.
template <class T>
class GuardWriter {
 public:
  GuardWriter(const Conversion<T>& c, const MosaicRing<T>& ring) : c_(c), ring_(ring) {}

  // The guard pixels to the left and right of row y.
  void beside(int y, T* row) const {
    const ptrdiff_t Wf = ptrdiff_t(ring_.columns());
    for (ptrdiff_t x : {ptrdiff_t{-2}, ptrdiff_t{-1}, Wf, Wf + 1}) pixel(y, x, row);
  }

  // The guard rows that are copies of row y.
  void aboveAndBelow(int y) const {
    if (y < 2) wholeRow(y, c_.imageRow(y - 2));
    if (y >= ring_.height() - 2) wholeRow(y, c_.imageRow(y + 2));
  }

 private:
  void pixel(int y, ptrdiff_t x, T* row) const {
    const unsigned parity = unsigned(x) & 1;
    std::fill_n(row + 3 * x, 3, T{0});
    row[3 * x + ring_.mosaic().colourAt(x, y)] = ring_.half(y, parity)[(x - ptrdiff_t(parity)) / 2];
  }
  void wholeRow(int y, T* row) const {
    for (ptrdiff_t x = -2; x < ptrdiff_t(ring_.columns()) + 2; ++x) pixel(y, x, row);
  }

  const Conversion<T>& c_;
  const MosaicRing<T>& ring_;
};

// The sweep of an algorithm: stages of its own between smoothing and the last one, which fills the
// pixels of a row: pixelRow(y, sink).
template <class T, class PixelRow, class... OwnStages>
void sweepGuarded(const Conversion<T>& c, MosaicRing<T>& ring, int reachOfLast, PixelRow pixelRow,
                  OwnStages... ownStages) {
  WorkImage<T> image(c);
  if (!image) return;
  const GuardWriter<T> guard(c, ring);
  const RowInterval rows{0, ring.height()};
  sweep(rows, rows, stage(0, [&](int y) { ring.load(y); }),
        stage(1, [&](int y) { ring.smooth(y); }), ownStages..., stage(reachOfLast, [&](int y) {
          RowSink<T> sink = image.row(y);
          guard.beside(y, sink.pixels());
          guard.aboveAndBelow(y);
          sink.fetch({ring.nextSource(), sizeof(T)});
          pixelRow(y, sink);
          image.finish(y, sink);
        }));
  image.finish();
}

// Wf or Hf of less than 2: the guard has copies of what the work buffer held, so that the work is
// done in it, pass after pass.
inline bool isDegenerate(const Region& region) { return region.Wf < 2 || region.Hf < 2; }

}  // namespace vistrel::core
