// The samples to convert, as the library expects them: aligned, a whole number of samples from row
// to row, the significant bits lowest and no other bit set.
#pragma once

#include <memory>

#include "host/plan.h"
#include "host/significant.h"

namespace vistrel::host {

template <class T>
class Samples {
 public:
  // Refers to the frame where it can, and copies it where it must. Throws Rejection and
  // std::bad_alloc.
  Samples(const Plan& plan, const vistrel_frame& frame, const vistrel_conversion& conversion);

  const T* first() const { return first_; }
  uint32_t stride() const { return stride_; }  // samples

 private:
  void referOrCopy();
  void copy();
  bool exceeded() const;
  void rejectExcess() const;
  void prepare(const vistrel_conversion& conversion);

  const Plan& plan_;
  const vistrel_frame& frame_;
  const Significant<T> significant_;
  const T* first_;
  uint32_t stride_;
  std::unique_ptr<T[]> copy_;
};

}  // namespace vistrel::host
