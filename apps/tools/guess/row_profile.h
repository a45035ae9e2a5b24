// Where one frame ends and the next begins.
#pragma once

#include <cstddef>
#include <vector>

#include "apps/tools/guess/row_reader.h"

namespace vistrel::app {

class RowProfile {
 public:
  RowProfile(RowReader& reader, uint32_t width);

  // How often, of all rows, the first row of a picture is less likely than this one: 0..1.
  double rankOfSeam(size_t row) const;

  // How much it stands out: 1 for the row that does most.
  double strengthOfSeam(size_t row) const;

  // How much frames of so many rows are alike: their rows' distances in brightness, compared with
  // those of other rows; 1 if frames have nothing in common.
  double distanceOfFrames(size_t first, size_t height) const;

  // The most likely ones.
  std::vector<size_t> seams() const;

 private:
  std::vector<double> levels_, jumps_, sorted_;
};

}  // namespace vistrel::app
