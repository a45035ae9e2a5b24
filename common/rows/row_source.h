// The rows of samples that a sweep reads.
#pragma once

#include <cstddef>

#include "common/rows/nontemporal.h"

namespace vistrel::core {

// Columns at the ends of a row that mirror those between them.
struct Margins {
  size_t left = 0, right = 0;
};

template <class T>
class RowSource {
 public:
  // The samples of row y, valid until another row is requested. Sweeps request rows in order, each
  // once.
  virtual const T* row(int y) = 0;

  // The same without the margins, for sweeps that mirror columns themselves.
  virtual const T* withoutMargins(int y) { return row(y) + margins_.left; }
  Margins margins() const { return margins_; }

  // Prefetches the row after the one requested last.
  Prefetcher next() const { return next_; }

 protected:
  ~RowSource() = default;
  Prefetcher next_;
  Margins margins_;
};

// Rows in memory.
template <class T>
class PlainRows final : public RowSource<T> {
 public:
  // first: the first sample of row 0. step: distance between two rows, in samples. end: the number
  // of the row after the last.
  PlainRows(const T* first, ptrdiff_t step, int end) : first_(first), step_(step), end_(end) {}

  const T* row(int y) override {
    const T* const samples = first_ + y * step_;
    this->next_ = y + 1 < end_ ? Prefetcher(samples + step_, sizeof(T)) : Prefetcher();
    return samples;
  }

 private:
  const T* first_;
  ptrdiff_t step_;
  int end_;
};

}  // namespace vistrel::core
