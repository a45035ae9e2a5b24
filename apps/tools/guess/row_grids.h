// Packings and strides with which neighbouring samples are alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "apps/tools/guess/columns.h"
#include "apps/tools/guess/row_reader.h"

namespace vistrel::app {

// Rows in a file, which begin anywhere: `skip` is less than a stride.
struct RowGrid {
  Layout layout;
  double rate = 99;        // bits that a byte of the file takes, predicted from its neighbours
  double recurrence = 0;   // of rows, as Recurrence has it
  double unit = 1;         // of samples: 2 if their lowest bit is always 0
  size_t unexplained = 0;  // bytes of each row that never change, although they are samples
  Padding padding = {};    // of its rows, if any
};

// The best, best first. If `width` is not 0, they have rows of that many samples.
std::vector<RowGrid> rowGrids(const std::vector<uint8_t>& bytes, uint32_t width);

// Where rows may begin if nothing but the length of the file is known; less than `period`.
std::vector<size_t> likelySkips(size_t bytes, size_t period);

}  // namespace vistrel::app
