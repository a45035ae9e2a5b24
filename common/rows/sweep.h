// The schedule of all algorithms: each stage runs row by row, as soon as the rows that it reads are
// completed, so that a frame passes through memory only once.
#pragma once

#include <algorithm>
#include <limits>
#include <tuple>

namespace vistrel::core {

// To make row y, a stage reads rows y - reach .. y + reach of the stage before.
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

// Makes the given rows of the last stage. Earlier stages make the rows that these depend on, within
// `bounds`: the rows of the frame, or more if rows continue beyond it.
template <class... RowFunctions>
class Sweep {
 public:
  Sweep(RowInterval rows, RowInterval bounds, Stage<RowFunctions>... stages)
      : rows_(rows), bounds_(bounds), stages_(stages...), reach_((0 + ... + stages.reach)),
        next_(rows.first - reach_) {}

  // Runs all stages as far as the first stage's rows before `end` allow.
  void advance(int end) {
    for (end = std::min(end, last()); next_ < end; ++next_) step(next_);
  }
  void finish() { advance(last()); }

  // The first stage makes rows first() .. last() - 1.
  int first() const { return rows_.first - reach_; }
  int last() const { return rows_.end + reach_; }

 private:
  // The first stage makes row `top`, each later stage the row that this completes.
  void step(int top) {
    int y = top, reach = reach_;  // the remaining reach
    const auto make = [&](auto& stage) {
      y -= stage.reach;
      reach -= stage.reach;
      const bool isWanted = rows_.first - reach <= y && y < rows_.end + reach;
      if (isWanted && bounds_.first <= y && y < bounds_.end) stage.row(y);
    };
    std::apply([&](auto&... stage) { (make(stage), ...); }, stages_);
  }

  RowInterval rows_, bounds_;
  std::tuple<Stage<RowFunctions>...> stages_;
  int reach_, next_;
};

}  // namespace vistrel::core
