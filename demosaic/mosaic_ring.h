// The mosaic of a region as half rows, a few rows at a time: what every guarded sweep begins with.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/row_depths.h"
#include "demosaic/job.h"

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
  MosaicRing(const DemosaicJob<T>& job, unsigned rows, Arena& arena,
             RowDepth depth = RowDepth::ignored);

  void load(int y);    // from the source
  void smooth(int y);  // green, from rows y - 1 .. y + 1 that were loaded

  // Fetches the row that is loaded next.
  Prefetcher nextSource() const { return source_.next(); }

  // A half of row y, smoothed if it holds green. Rows outside the region are the second rows
  // inside, as in the guard; elements -1 and n of a half likewise.
  const T* half(int y, unsigned columnParity) const;

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    return windowOf<reach>(y, [this](int row, unsigned parity) { return half(row, parity); });
  }

  const RowDepths& depths() const { return depths_; }  // where they are found

  const Mosaic& mosaic() const { return mosaic_; }
  size_t columns() const { return columns_; }
  size_t halfSize(unsigned columnParity) const { return (columns_ + 1 - columnParity) / 2; }
  // The red or blue sites of row y.
  size_t colourSites(int y) const { return halfSize(mosaic().colourParity(y)); }
  int height() const { return height_; }

 private:
  RowSource<T>& source_;
  Mosaic mosaic_;
  size_t columns_;
  int height_;
  RowDepth depth_;
  RowDepths depths_;
  HalfRowRing<T> raw_, green_;
};

}  // namespace vistrel::core
