// Where a sweep's rows of samples come from.
#pragma once

#include "common/rows/nontemporal.h"

namespace vistrel::core {

template <class T>
class RowSource {
 public:
  // The samples of row y. They stay until another row is asked for. Sweeps ask for one row after
  // the other, each once.
  virtual const T* row(int y) = 0;

  // Fetches the row that follows the one asked for last.
  Prefetcher next() const { return next_; }

 protected:
  ~RowSource() = default;
  Prefetcher next_;
};

// Rows in memory.
template <class T>
class PlainRows final : public RowSource<T> {
 public:
  // first: the first sample of row 0. step: from row to row, in samples. end: the row that ends
  // them.
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
