// A plot of scores: a row of dots for each algorithm.
#pragma once

#include <string>

#include "apps/tools/drawing/canvas.h"
#include "apps/tools/report/evaluation.h"

namespace vistrel::app {

struct Evaluation {
  std::string name;  // of the reference image
  uint32_t width, height;
  std::vector<Score> scores;  // by algorithm
};

// By algorithm.
std::vector<Score> meanOf(const std::vector<Evaluation>& evaluations);

// CPSNR grows to the right; algorithms are sorted by their mean, best first. Small dots are single
// images, large ones the mean.
Canvas plotOf(const std::vector<Evaluation>& evaluations,
              const std::vector<AlgorithmChoice>& algorithms);

}  // namespace vistrel::app
