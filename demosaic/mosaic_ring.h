// The mosaic of a region as half rows, a few rows at a time. Every guarded sweep begins with it.
#pragma once

#include "common/rows/half_rows.h"
#include "common/rows/row_depths.h"
#include "demosaic/job.h"
#include "demosaic/mosaic_kernels.h"

namespace vistrel::core {

// Whether to record which rows have samples of more than twelve bits.
enum class DepthTracking { off, on };

template <class T>
class MosaicRing {
 public:
  // rows: the number of smoothed rows that the stages after smoothing need at a time.
  MosaicRing(const DemosaicJob<T>& job, unsigned rows, Arena& arena,
             DepthTracking depth = DepthTracking::off);

  void load(int y);    // from the source, whose margins it mirrors
  void smooth(int y);  // green, from the loaded rows y - 1 .. y + 1

  // Prefetches the row that is loaded next.
  Prefetcher nextSource() const { return source_.next(); }

  // A half of row y, smoothed if it holds green. Rows outside the region repeat the rows two
  // further inside, as in the guard; so do elements -1 and n of a half.
  const T* half(int y, unsigned columnParity) const;

  template <int reach>
  HalfRowWindow<T, reach> window(int y) const {
    return windowOf<reach>(y, [this](int row, unsigned parity) { return half(row, parity); });
  }

  const RowDepths& depths() const { return depths_; }  // if they are recorded

  const Mosaic& mosaic() const { return mosaic_; }
  size_t columns() const { return columns_; }
  size_t halfSize(unsigned columnParity) const { return (columns_ + 1 - columnParity) / 2; }
  // The number of red or blue sites in row y.
  size_t colourSites(int y) const { return halfSize(mosaic().colourParity(y)); }
  int height() const { return height_; }

 private:
  RowSource<T>& source_;
  const Margins margins_;
  Mosaic mosaic_;
  size_t columns_;
  int height_;
  DepthTracking depth_;
  RowDepths depths_;
  HalfRowRing<T> raw_, green_;
};

}  // namespace vistrel::core
