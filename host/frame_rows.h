// The rows of a frame as a conversion reads them: prepared samples, mirrored beyond the frame.
#pragma once

#include <optional>

#include "common/rows/arena.h"
#include "common/rows/row_source.h"
#include "host/calibration.h"
#include "host/plan.h"
#include "host/preparation.h"
#include "samples/prepare.h"
#include "samples/unpack.h"

namespace vistrel::host {

// Makes the plan's rows from those of the frame. T: the samples of the engine, which are wider than
// those of a frame of bytes if pixels are finished.
template <class T>
class RowPreparation {
 public:
  // gains: red, green, blue.
  RowPreparation(const Plan& plan, const vistrel_frame& frame, const vistrel_conversion& conversion,
                 const Gains& gains);

  // Whether the plan's rows, without their margins, are parts of the frame's.
  bool copies() const { return !packing_ && !widens() && isReady_; }
  core::Margins margins() const { return {left_, right_}; }

  // The first byte that is read from a row of the frame.
  const unsigned char* begin(const unsigned char* frameRow) const {
    return frameRow +
           (packing_ ? core::packedBytes(*packing_, first_) : first_ * frame_.bytes_per_sample);
  }

  // Prefetches a row of the frame. For packed samples it counts one byte each, so it leaves out the
  // end of the row.
  core::Prefetcher fetch(const unsigned char* frameRow) const {
    return {begin(frameRow), packing_ ? 1 : frame_.bytes_per_sample};
  }

  // Makes the plan's row y, of plan.width samples, from a row of the frame.
  void make(int y, const unsigned char* frameRow, T* row) const;
  // The same without the margins.
  void makeWithoutMargins(int y, const unsigned char* frameRow, T* samples) const;

 private:
  bool widens() const { return sizeof(T) > frame_.bytes_per_sample; }
  int64_t columnOf() const { return plan_.x + static_cast<int64_t>(left_); }
  core::Preparation preparationOf(int y) const;
  const void* load(const unsigned char* frameRow, T* samples) const;
  void finish(int y, const void* from, T* samples) const;
  void prepare(int y, const void* from, T* samples) const;

  const Plan& plan_;
  const vistrel_frame& frame_;
  const vistrel_conversion& conversion_;
  Gains gains_;
  std::optional<core::Packing> packing_;
  std::optional<Calibration> calibration_;
  bool isReady_;                 // samples need no preparation
  size_t first_;                 // the first sample that is read from a row of the frame
  size_t left_, count_, right_;  // samples of a row: mirrored, the frame's, mirrored
};

// Row y is the plan's row y. It lies in the frame if its samples need no change; otherwise in a
// line, which each row overwrites.
template <class T>
class FrameRows final : public core::RowSource<T> {
 public:
  FrameRows(const Plan& plan, const vistrel_frame& frame, const vistrel_conversion& conversion,
            const Gains& gains, core::Arena& arena);

  const T* row(int y) override;
  const T* withoutMargins(int y) override;

 private:
  const unsigned char* rowOf(int y) const;
  const unsigned char* request(int y);

  const Plan& plan_;
  const vistrel_frame& frame_;
  const size_t stride_;
  RowPreparation<T> preparation_;
  const bool staysInFrame_;  // without margins
  T* line_ = nullptr;        // null where none is made
};

}  // namespace vistrel::host
