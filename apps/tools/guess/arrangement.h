// Where in a file the frames of a grid of rows begin, and how many rows they have.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "apps/options/geometry.h"
#include "apps/tools/guess/row_grids.h"

namespace vistrel::app {

struct Arrangement {
  Layout layout;
  uint32_t height, frames;
  size_t trailing;  // bytes after the last frame
  double unit;      // as that of the grid
  double odds;      // the logarithm to base 2 of the likelihood, up to a constant
};

// All that are possible; only those of `size` if it is given.
std::vector<Arrangement> arrangementsOf(const std::vector<uint8_t>& bytes, const RowGrid& grid,
                                        const std::optional<Size>& size);

}  // namespace vistrel::app
