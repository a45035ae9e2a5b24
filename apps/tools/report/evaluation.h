// An algorithm on trial: mosaics of a true picture, demosaiced, timed and judged.
#pragma once

#include "apps/options/algorithm.h"
#include "apps/tools/report/quality.h"

namespace vistrel::app {

struct Score {
  double cpsnr = 0, ssim = 0;  // means over the four phases
  double nsPerPixel = 0;       // of the fastest conversion of kRuns in each phase
};

constexpr int kRuns = 3;

// The samples that a sensor with filters of that phase would have seen.
std::vector<uint8_t> mosaicOf(const Image& truth, uint32_t phase);

// Throws Failure (rejected) for a picture that is too small to be judged.
void checkTruth(const Image& truth);

// One score for each algorithm.
std::vector<Score> tryAll(const Image& truth, const std::vector<Algorithm>& algorithms);

}  // namespace vistrel::app
