// Where a sweep's rows of samples come from.
#pragma once

#include <cstddef>

namespace vistrel::core {

template <class T>
class RowSource {
 public:
  // first: the first sample of row 0. step: from row to row, in samples.
  RowSource(const T* first, ptrdiff_t step, int height)
      : first_(first), step_(step), height_(height) {}

  int height() const { return height_; }
  bool has(int y) const { return 0 <= y && y < height_; }

  // The samples of a row that it has; they need not stay there once another row is asked for.
  const T* row(int y) const { return first_ + y * step_; }

 private:
  const T* first_;
  ptrdiff_t step_;
  int height_;
};

}  // namespace vistrel::core
