// Titled strips of labelled pictures.
#pragma once

#include <string>
#include <vector>

#include "apps/tools/drawing/canvas.h"

namespace vistrel::app {

struct Cell {
  std::string label;
  Image image;          // RGB24
  vistrel_region part;  // the part that is shown
};

struct Strip {
  std::string title;
  std::vector<Cell> cells;
};

// Throws ProgramError (usage) if the sheet would be too large to view.
Canvas sheetOf(const std::vector<Strip>& strips, uint32_t zoom);

}  // namespace vistrel::app
