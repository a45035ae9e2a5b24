// The mosaic of a region as half rows, a few rows at a time: what every guarded sweep begins with.
#pragma once

#include "common/half_rows.h"
#include "common/mosaic.h"

namespace vistrel {

template <class T>
class MosaicRows {
 public:
  // rows: how many smoothed rows the stages behind smoothing need at a time.
  MosaicRows(const Region& region, const T* pSrc, size_t sourceStride, unsigned rows);

  explicit operator bool() const { return m_raw && m_green; }

  void load(int y);    // from the source
  void smooth(int y);  // green, from rows y - 1 .. y + 1 that were loaded

  // The row that is loaded next; null when none is left.
  const T* nextSource() const { return m_nextSource; }

  // A half of row y, smoothed if it holds green. Rows outside the region are the second rows
  // inside, as in the guard; elements -1 and n of a half likewise.
  const T* half(int y, unsigned columnParity) const;

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    HalfRowWindow<T, reach> w;
    for (int dy = -reach; dy <= reach; ++dy)
      for (unsigned parity = 0; parity < 2; ++parity)
        w.half[dy + reach][parity] = half(y + dy, parity);
    return w;
  }

  // The column parity of the green sites of row y, and whether its others are red.
  unsigned greenParity(int y) const { return (m_region.r0 ^ m_region.c0 ^ unsigned(y)) & 1; }
  bool isRedRow(int y) const { return ((m_region.r0 ^ unsigned(y)) & 1) == 0; }

  size_t columns() const { return m_region.Wf; }
  size_t halfSize(unsigned columnParity) const { return (m_region.Wf + 1 - columnParity) / 2; }
  int height() const { return static_cast<int>(m_region.Hf); }

 private:
  Region m_region;
  const T *m_source, *m_nextSource = nullptr;
  size_t m_stride;
  HalfRowRing<T> m_raw, m_green;
};

}  // namespace vistrel
