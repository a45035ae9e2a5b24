// The one schedule: every stage of an algorithm runs row by row, as soon as the rows that it
// reads are there, so that a frame passes through memory once.
#pragma once

#include <limits>

namespace vistrel::core {

// A stage reads `reach` rows above and below its own in the stage before.
template <class RowFunction>
struct Stage {
  int reach;
  RowFunction row;
};

template <class RowFunction>
Stage<RowFunction> stage(int reach, RowFunction row) {
  return {reach, row};
}

// Rows first .. end - 1.
struct RowInterval {
  int first, end;
};

constexpr RowInterval kUnbounded{std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};

// Makes the given rows of the last stage. The stages before make the rows that these depend on, as
// far as they lie within `bounds`: those of the frame, or more where rows continue beyond it.
template <class... RowFunctions>
void sweep(RowInterval rows, RowInterval bounds, Stage<RowFunctions>... stages) {
  const int reachOfAll = (0 + ... + stages.reach);
  for (int top = rows.first - reachOfAll; top < rows.end + reachOfAll; ++top) {
    int y = top, reach = reachOfAll;  // from here to the last stage
    const auto step = [&](auto& stage) {
      y -= stage.reach;
      reach -= stage.reach;
      const bool isWanted = rows.first - reach <= y && y < rows.end + reach;
      if (isWanted && bounds.first <= y && y < bounds.end) stage.row(y);
    };
    (step(stages), ...);
  }
}

}  // namespace vistrel::core
