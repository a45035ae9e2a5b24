// The mosaic of a region as half rows, a few rows at a time: what every guarded sweep begins with.
#pragma once

#include "common/mosaic.h"
#include "common/rows/half_rows.h"
#include "common/rows/row_depths.h"
#include "common/rows/row_source.h"

namespace vistrel::core {

// What each level has of its own.
template <class T>
struct MosaicKernels {
  void (*split)(const T* source, size_t columns, T* even, T* odd);
  T (*splitAndBits)(const T* source, size_t columns, T* even, T* odd);
  void (*smooth)(const T* green, const T* above, const T* below, size_t n, T* smoothed);
};

// Whether it is found out which rows have samples of more than twelve bits.
enum class RowDepth { ignored, found };

template <class T>
class MosaicRing {
 public:
  // rows: how many smoothed rows the stages behind smoothing need at a time.
  MosaicRing(const Region& region, const T* pSrc, size_t sourceStride, unsigned rows,
             RowDepth depth = RowDepth::ignored);

  explicit operator bool() const { return raw_ && green_; }

  void load(int y);    // from the source
  void smooth(int y);  // green, from rows y - 1 .. y + 1 that were loaded

  // The row that is loaded next; null when none is left.
  const T* nextSource() const { return nextSource_; }

  // A half of row y, smoothed if it holds green. Rows outside the region are the second rows
  // inside, as in the guard; elements -1 and n of a half likewise.
  const T* half(int y, unsigned columnParity) const;

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    return windowOf<reach>(y, [this](int row, unsigned parity) { return half(row, parity); });
  }

  const RowDepths& depths() const { return depths_; }  // where they are found

  const Mosaic& mosaic() const { return region_.mosaic; }
  size_t columns() const { return region_.Wf; }
  size_t halfSize(unsigned columnParity) const { return (region_.Wf + 1 - columnParity) / 2; }
  // The red or blue sites of row y.
  size_t colourSites(int y) const { return halfSize(mosaic().colourParity(y)); }
  int height() const { return static_cast<int>(region_.Hf); }

 private:
  Region region_;
  RowDepth depth_;
  RowDepths depths_;
  RowSource<T> source_;
  const T* nextSource_ = nullptr;
  HalfRowRing<T> raw_, green_;
};

}  // namespace vistrel::core
