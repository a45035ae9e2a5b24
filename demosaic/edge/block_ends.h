// What blocks of eight pixels compute beyond the end of a row.
#pragma once

#include <algorithm>

#include "demosaic/edge/edge_rings.h"
#include "demosaic/edge/edge_sites.h"

namespace vistrel::core {

struct EdgeSettings {
  int thresholds[4];  // of smoothing, falling
  int limit;          // the largest sample
};

template <class T>
class BlockEnds {
 public:
  static constexpr int kBlock = 8;

  BlockEnds(const EdgeFrame<T>& frame, const EdgeSettings& settings)
      : frame_(frame), settings_(settings), pixels_(-frame.columns() & (kBlock - 1)) {}

  // Pixels beyond the end of a row, 0..7.
  size_t pixels() const { return size_t(pixels_); }

  // Those of row y. They see what lies there: zeros, then the rows below from their beginning.
  void compute(int y, T* ends) const {
    if (pixels_ == 0) return;
    T patch[kPatchRows * kPatchColumns];
    for (int j = 0; j < kPatchRows; ++j)
      for (int i = 0; i < kPatchColumns; ++i)
        patch[j * kPatchColumns + i] = frame_.at(y + j - kReach, frame_.columns() + i - kReach);
    int colours[3][kBlock];
    for (int first : {0, 1}) callKernel(patch, y, first, colours);
    for (ptrdiff_t i = 0; i < pixels_; ++i)
      for (int channel = 0; channel < 3; ++channel)
        *ends++ = static_cast<T>(std::clamp(colours[channel][i], 0, settings_.limit));
  }

 private:
  static constexpr int kReach = 2, kPatchRows = 2 * kReach + 1;
  static constexpr int kPatchColumns = kBlock + 2 * kReach;

  // Every second pixel.
  void callKernel(const T* patch, int y, int first, int (&colours)[3][kBlock]) const {
    const int position = kReach * kPatchColumns + kReach + first;
    int *const red = colours[kRed] + first, *const blue = colours[kBlue] + first;
    int* const green = colours[kGreen] + first;
    const bool isBlueRow = !frame_.mosaic().isRedRow(y);
    EdgeSettings settings = settings_;
    auto& [t0, t1, t2, t3] = settings.thresholds;
    if (frame_.mosaic().isGreenAt(frame_.columns() + first, y))
      vec_G_CalcGreen_3x3x4_ext(patch, position, kPatchColumns, red, blue, green, t0, t1, t2, t3,
                                isBlueRow);
    else
      vec_RB_CalcGreen_3x3x4_ext(patch, position, kPatchColumns, red, blue, green, isBlueRow);
  }

  const EdgeFrame<T>& frame_;
  const EdgeSettings settings_;
  ptrdiff_t pixels_;
};

}  // namespace vistrel::core
