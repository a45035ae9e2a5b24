// Titled rows of equal pictures with labels.
#pragma once

#include <string>
#include <vector>

#include "apps/tools/drawing/canvas.h"

namespace vistrel::app {

struct Cell {
  std::string label;
  Image image;          // BGR24
  vistrel_region part;  // what of it is shown
};

struct Strip {
  std::string title;
  std::vector<Cell> cells;
};

// Throws Failure (usage) for a sheet that is too large to be looked at.
Canvas sheetOf(const std::vector<Strip>& strips, uint32_t zoom);

}  // namespace vistrel::app
