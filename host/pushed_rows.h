// The source of a frame that arrives row by row.
#pragma once

#include <cstdlib>

#include "common/mirror.h"
#include "demosaic/algorithms.h"
#include "host/engine.h"
#include "host/frame_rows.h"

namespace vistrel::host {

// Keeps the last few rows, prepared for the engine.
template <class T>
class PushedRows final : public core::RowSource<T> {
 public:
  PushedRows(const EngineCall& call, core::Arena& arena)
      : plan_(call.plan), frame_(call.frame),
        preparation_(call.plan, call.frame, call.conversion, call.gains),
        width_(size_t{plan_.width} * channelsOf(frame_)), lines_(arena.take<T>(kHeld * width_)) {}

  // Adds row y of the frame; rows come in order. next: the row after it, or null.
  void push(uint32_t y, const unsigned char* frameRow, const unsigned char* next) {
    pushed_ = y + 1;
    this->next_ = next ? preparation_.fetch(next) : core::Prefetcher();
    preparation_.make(static_cast<int>(y - plan_.y), frameRow, line(y));
  }

  // Whether what a sweep reads at row y has arrived. y may lie beyond the plan's rows.
  bool has(int y) const {
    return rowOf(std::min(std::abs(y), static_cast<int>(plan_.height) - 1)) < pushed_;
  }

  const T* row(int y) override { return line(rowOf(y)); }

 private:
  // Above and below the frame, at most kLargestReach rows are mirrored.
  static constexpr uint32_t kHeld = core::kLargestReach + 1;

  // The frame's row that is the plan's row y.
  uint32_t rowOf(int y) const {
    return static_cast<uint32_t>(core::mirrored(plan_.y + y, frame_.height));
  }
  T* line(uint32_t frameRow) const { return lines_ + size_t{frameRow % kHeld} * width_; }

  const Plan& plan_;
  const vistrel_frame& frame_;
  RowPreparation<T> preparation_;
  size_t width_;  // samples of a row
  T* lines_;
  uint32_t pushed_ = 0;
};

}  // namespace vistrel::host
