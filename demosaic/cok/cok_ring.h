// Rings of a few rows: green and hues at the red and blue sites.
#pragma once

#include "demosaic/cok/cok_kernels.h"
#include "demosaic/guarded.h"

namespace vistrel::core {

template <class T>
class CokRing {
 public:
  CokRing(const MosaicRing<T>& ring, Arena& arena)
      : ring_(ring), green_(2, 1, ring.columns(), arena),
        hues_(kRows + 1, kParts, 2 * partSize(), arena) {}

  T* green(int y) const { return green_.half(static_cast<unsigned>(y), 0); }
  HueParts<T> hues(int y) const { return parts(static_cast<unsigned>(y) % kRows); }

  // quirk: guard-green. Beyond the region green is zero at red and blue sites, and so is the hue.
  void guard(int y) const {
    const int n = static_cast<int>(ring_.colourSites(y));
    *hues(y).element(-1) = *hues(y).element(n) = 0;
  }

  CokRows<T> around(int y) const {
    const unsigned parity = ring_.mosaic().greenParity(y);
    CokRows<T> rows;
    rows.green[parity] = ring_.half(y, parity);
    rows.green[1 - parity] = green(y);
    rows.colour = ring_.half(y, 1 - parity);
    for (int dy = -1; dy <= 1; ++dy) {
      const bool inside = 0 <= y + dy && y + dy < ring_.height();
      rows.hues.row[dy + 1] = inside ? hues(y + dy) : parts(kRows);
    }
    return rows;
  }

 private:
  static constexpr unsigned kRows = 3, kParts = HueParts<T>::kParts;

  size_t partSize() const { return ring_.halfSize(0) / kParts + 1; }

  HueParts<T> parts(unsigned row) const {
    HueParts<T> p;
    for (unsigned i = 0; i < kParts; ++i) p.part[i] = hues_.at(row, i);
    return p;
  }

  const MosaicRing<T>& ring_;
  HalfRowRing<T> green_;
  HalfRowRing<double> hues_;  // the last row stays zero
};

}  // namespace vistrel::core
