// The shape that the algorithms of the guarded layout share: spread the mosaic, fill the missing
// colours, convert. One sweep does all three, a row at a time.
#pragma once

#include <algorithm>

#include "common/rows/pixel_row.h"
#include "common/rows/sweep.h"
#include "demosaic/finished_rows.h"
#include "demosaic/mosaic_rows.h"

namespace vistrel::core {

// Writes the guard from the mosaic as it was spread, before any colour is filled in.
template <class T>
class GuardWriter {
 public:
  GuardWriter(const Conversion<T>& c, const MosaicRows<T>& mosaic) : c_(c), mosaic_(mosaic) {}

  // The guard pixels to the left and right of row y.
  void beside(int y, T* row) const {
    const ptrdiff_t Wf = ptrdiff_t(mosaic_.columns());
    for (ptrdiff_t x : {ptrdiff_t{-2}, ptrdiff_t{-1}, Wf, Wf + 1}) pixel(y, x, row);
  }

  // The guard rows that are copies of row y.
  void aboveAndBelow(int y) const {
    if (y < 2) wholeRow(y, c_.imageRow(y - 2));
    if (y >= mosaic_.height() - 2) wholeRow(y, c_.imageRow(y + 2));
  }

 private:
  void pixel(int y, ptrdiff_t x, T* row) const {
    const unsigned parity = unsigned(x) & 1;
    const bool isGreen = parity == mosaic_.greenParity(y);
    const int channel = isGreen ? kGreen : mosaic_.isRedRow(y) ? kRed : kBlue;
    std::fill_n(row + 3 * x, 3, T{0});
    row[3 * x + channel] = mosaic_.half(y, parity)[(x - ptrdiff_t(parity)) / 2];
  }
  void wholeRow(int y, T* row) const {
    for (ptrdiff_t x = -2; x < ptrdiff_t(mosaic_.columns()) + 2; ++x) pixel(y, x, row);
  }

  const Conversion<T>& c_;
  const MosaicRows<T>& mosaic_;
};

// The sweep of an algorithm: stages of its own between smoothing and the last one, which fills the
// pixels of a row: pixelRow(y, pixels, copies).
template <class T, class PixelRow, class... OwnStages>
void sweepGuarded(const Conversion<T>& c, MosaicRows<T>& mosaic, int reachOfLast, PixelRow pixelRow,
                  OwnStages... ownStages) {
  const FinishedRows<T> finished(c);
  if (!finished) return;
  const GuardWriter<T> guard(c, mosaic);
  sweep(mosaic.height(), stage(0, [&](int y) { mosaic.load(y); }),
        stage(1, [&](int y) { mosaic.smooth(y); }), ownStages..., stage(reachOfLast, [&](int y) {
          T* const row = finished.row(y);
          guard.beside(y, row);
          guard.aboveAndBelow(y);
          RowCopies<T> copies = finished.copies(y);
          copies.source = FetchAhead(mosaic.nextSource(), sizeof(T));
          pixelRow(y, row, copies);
          finished.finish(y, copies);
        }));
  finished.finishAll();
}

// Wf or Hf of less than 2: the guard has copies of what the work buffer held, so that the work is
// done in it, pass after pass.
inline bool isThin(const Region& region) { return region.Wf < 2 || region.Hf < 2; }

}  // namespace vistrel::core
