// The rows of a frame as a conversion reads them: ready samples, with their surroundings.
#pragma once

#include <optional>

#include "common/rows/arena.h"
#include "common/rows/row_source.h"
#include "host/plan.h"
#include "host/preparation.h"
#include "samples/prepare.h"
#include "samples/unpack.h"

namespace vistrel::host {

// Row y is the plan's row y. Rows lie in the frame where it has them as they are wanted, else in a
// line that each row overwrites.
template <class T>
class FrameRows final : public core::RowSource<T> {
 public:
  // gains: red, green, blue.
  FrameRows(const Plan& plan, const vistrel_frame& frame, const vistrel_conversion& conversion,
            const Gains& gains, core::Arena& arena);

  const T* row(int y) override;

 private:
  const unsigned char* rowOf(int y) const;
  core::Prefetcher fetchOf(int y) const;
  void load(int y, T* samples) const;
  core::Preparation preparationOf(int y) const;

  const Plan& plan_;
  const vistrel_frame& frame_;
  const vistrel_conversion& conversion_;
  Gains gains_;
  std::optional<core::Packing> packing_;
  bool isReady_;                 // samples need no preparation
  size_t stride_;                // of the frame
  size_t first_;                 // the first of a frame's row that is wanted
  size_t left_, count_, right_;  // samples: mirrored ones, the frame's, mirrored ones
  T* line_ = nullptr;            // null where rows stay in the frame
};

}  // namespace vistrel::host
