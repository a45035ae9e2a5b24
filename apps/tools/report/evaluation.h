// Evaluates algorithms: demosaics mosaics of a reference image, times and scores the results.
#pragma once

#include "apps/options/algorithm.h"
#include "apps/tools/report/quality.h"

namespace vistrel::app {

struct Score {
  double cpsnr = 0, ssim = 0;  // means over the four phases
  double nsPerPixel = 0;       // the fastest of kRuns conversions per phase
};

constexpr int kRuns = 3;

// The samples that a sensor with filters of that phase would see.
std::vector<uint8_t> mosaicOf(const Image& reference, uint32_t phase);

// Throws ProgramError (rejected) if the image is too small to be scored.
void checkReference(const Image& reference);

// One score for each algorithm.
std::vector<Score> evaluateAll(const Image& reference,
                               const std::vector<AlgorithmChoice>& algorithms);

}  // namespace vistrel::app
