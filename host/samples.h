// The region's samples, as the library wants them: aligned, a whole number of
// samples from row to row, the significant bits lowest and no other bit set.
#pragma once

#include <memory>

#include "host/plan.h"

namespace vistrel::host {

template <class T>
class Samples {
 public:
  // Refers to the frame where it can and copies where it must. Throws Refusal and
  // std::bad_alloc.
  Samples(const Plan& plan, const vistrel_frame& frame, uint32_t excess);

  const T* first() const { return first_; }
  uint32_t stride() const { return stride_; }  // samples

 private:
  void copyRows(const unsigned char* source, const Plan& plan);
  T allBits(const Plan& plan) const;
  [[noreturn]] void refuseExcess(const Plan& plan, const vistrel_frame& frame, T allowed) const;

  const T* first_;
  uint32_t stride_;
  std::unique_ptr<T[]> copy_;
};

}  // namespace vistrel::host
