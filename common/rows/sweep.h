// The one schedule: every stage of an algorithm runs row by row, as soon as the rows that it
// reads are there, so that a frame passes through memory once.
#pragma once

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

template <class... RowFunctions>
void sweep(int height, Stage<RowFunctions>... stages) {
  const int lagOfLast = (0 + ... + stages.reach);
  for (int top = 0; top < height + lagOfLast; ++top) {
    int y = top;
    const auto step = [&](auto& stage) {
      y -= stage.reach;
      if (0 <= y && y < height) stage.row(y);
    };
    (step(stages), ...);
  }
}

// One step of a sweep over rows of which none lies outside: with its newest row every stage runs
// where all the rows that it reads are there. So each loses its reach at the top.
template <class... RowFunctions>
void stepInside(int newest, Stage<RowFunctions>... stages) {
  int y = newest, first = 0;
  const auto step = [&](auto& stage) {
    y -= stage.reach;
    first += stage.reach;
    if (y >= first) stage.row(y);
  };
  (step(stages), ...);
}

}  // namespace vistrel::core
