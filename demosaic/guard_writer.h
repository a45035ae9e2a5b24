// Writes the guard around the image in the work buffer.
#pragma once

#include "demosaic/conversion.h"
#include "demosaic/mosaic_ring.h"

namespace vistrel::core {

// Copies the scattered mosaic, before any colour is filled in.
template <class T>
class GuardWriter final : public WorkMargins<T> {
 public:
  explicit GuardWriter(const Conversion<T>& c) : c_(c) {}

  // Writes the guard on both sides of row y, and the guard rows that are copies of row y.
  void guard(int y, const MosaicRing<T>& ring, T* row) override {
    const auto Wf = static_cast<ptrdiff_t>(ring.columns());
    for (ptrdiff_t x : {ptrdiff_t{-2}, ptrdiff_t{-1}, Wf, Wf + 1}) pixel(ring, y, x, row);
    if (y < 2) wholeRow(ring, y, c_.imageRow(y - 2));
    if (y >= ring.height() - 2) wholeRow(ring, y, c_.imageRow(y + 2));
  }

  void beyond(int, const T*, size_t) override {}

 private:
  static void pixel(const MosaicRing<T>& ring, int y, ptrdiff_t x, T* row) {
    const auto parity = static_cast<unsigned>(x) & 1;
    std::fill_n(row + 3 * x, 3, T{0});
    row[3 * x + ring.mosaic().colourAt(x, y)] =
        ring.half(y, parity)[(x - static_cast<ptrdiff_t>(parity)) / 2];
  }
  static void wholeRow(const MosaicRing<T>& ring, int y, T* row) {
    for (ptrdiff_t x = -2; x < static_cast<ptrdiff_t>(ring.columns()) + 2; ++x)
      pixel(ring, y, x, row);
  }

  const Conversion<T>& c_;
};

}  // namespace vistrel::core
