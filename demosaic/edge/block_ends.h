// The pixels that blocks of eight compute beyond the end of a row.
#pragma once

#include <algorithm>
#include <utility>

#include "demosaic/edge/edge_rings.h"
#include "demosaic/edge/edge_sites.h"

namespace vistrel::core {

struct EdgeSettings {
  int thresholds[4];  // of smoothing, in falling order
  int limit;          // the largest sample
};

template <class T>
class BlockEnds {
 public:
  static constexpr int kBlock = 8;

  BlockEnds(const EdgeMosaicRing<T>& ring, const DemosaicJob<T>& job, const EdgeSettings& settings)
      : ring_(ring), columns_(job.columns), mosaic_(job.mosaic), settings_(settings),
        pixels_(-columns_ & (kBlock - 1)) {
    if (job.order != job.mosaic) std::swap(order_[0], order_[2]);
  }

  // How many rows below its own it reads: two, and those that lie within ten columns beyond the end
  // of a row. If rows are shorter than four columns, these are the next two rows.
  static int reach(int columns) { return columns < 4 ? 4 : 3; }

  // The number of pixels beyond the end of a row, 0..7.
  size_t pixels() const { return static_cast<size_t>(pixels_); }

  // Computes those of row y. They read what lies there: zeros, then the beginnings of the rows
  // below.
  void compute(int y, T* ends) const {
    if (pixels_ == 0) return;
    T patch[kPatchRows * kPatchColumns];
    for (int j = 0; j < kPatchRows; ++j)
      for (int i = 0; i < kPatchColumns; ++i)
        patch[j * kPatchColumns + i] = ring_.at(y + j - kReach, columns_ + i - kReach);
    int colours[3][kBlock];
    for (int first : {0, 1}) callKernel(patch, y, first, colours);
    for (ptrdiff_t i = 0; i < pixels_; ++i)
      for (int channel : order_)
        *ends++ = static_cast<T>(std::clamp(colours[channel][i], 0, settings_.limit));
  }

 private:
  static constexpr int kReach = 2, kPatchRows = 2 * kReach + 1;
  static constexpr int kPatchColumns = kBlock + 2 * kReach;

  // Computes every second pixel.
  void callKernel(const T* patch, int y, int first, int (&colours)[3][kBlock]) const {
    const int position = kReach * kPatchColumns + kReach + first;
    int *const red = colours[kRed] + first, *const blue = colours[kBlue] + first;
    int* const green = colours[kGreen] + first;
    const bool isBlueRow = !mosaic_.isRedRow(y);
    EdgeSettings settings = settings_;
    auto& [t0, t1, t2, t3] = settings.thresholds;
    if (mosaic_.isGreenAt(columns_ + first, y))
      vec_G_CalcGreen_3x3x4_ext(patch, position, kPatchColumns, red, blue, green, t0, t1, t2, t3,
                                isBlueRow);
    else
      vec_RB_CalcGreen_3x3x4_ext(patch, position, kPatchColumns, red, blue, green, isBlueRow);
  }

  const EdgeMosaicRing<T>& ring_;
  ptrdiff_t columns_;
  Mosaic mosaic_;
  EdgeSettings settings_;
  ptrdiff_t pixels_;
  int order_[3] = {kBlue, kGreen, kRed};
};

}  // namespace vistrel::core
