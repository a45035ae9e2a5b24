// Scores as a picture: a line of dots for each algorithm.
#pragma once

#include <string>

#include "apps/tools/drawing/canvas.h"
#include "apps/tools/report/evaluation.h"

namespace vistrel::app {

struct Trial {
  std::string name;  // of the picture
  uint32_t width, height;
  std::vector<Score> scores;  // by algorithm
};

// By algorithm.
std::vector<Score> meanOf(const std::vector<Trial>& trials);

// CPSNR to the right, algorithms from the best mean down: small dots for the pictures, a large one
// for the mean.
Canvas plotOf(const std::vector<Trial>& trials, const std::vector<Algorithm>& algorithms);

}  // namespace vistrel::app
