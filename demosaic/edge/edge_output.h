// The way of the edge demosaic's rows into the work buffer and the result.
#pragma once

#include "demosaic/edge/block_ends.h"
#include "demosaic/finished_rows.h"

namespace vistrel::core {

// Leaves the work buffer as blocks of eight pixels by two rows do, one after the other. What they
// compute beyond the end of a row goes to the right guard and on into the row below.
template <class T>
class EdgeOutput {
 public:
  // workEnd: of the work buffer. Nothing is written there.
  EdgeOutput(const Conversion<T>& c, const BlockEnds<T>& ends, const T* workEnd)
      : c_(c), image_(withoutGuard(c)), finished_(image_), ends_(ends), workEnd_(workEnd),
        first_(static_cast<int>(c.region.y0)), spare_(new (std::nothrow) T[rowSamples()]) {}

  explicit operator bool() const { return finished_ && spare_; }

  // From y0 on, row by row. fill(pixels, copies) makes the pixels of row y.
  template <class Fill>
  void row(int y, Fill fill) {
    const bool isFollowed = first_ == 0 && y < static_cast<int>(c_.region.Hf);
    T* const pixels = isFollowed ? finished_.row(y) : spare_.get();
    RowCopies<T> copies = isFollowed ? finished_.copies(y) : RowCopies<T>();
    make(y, pixels, copies, fill);
    if (isFollowed)
      finished_.finish(y, copies);
    else
      store(pixels, rowSamples(), image_.imageRow(y));
    ends_.compute(y, beyond_);
    store(beyond_, 3 * ends_.pixels(), image_.imageRow(y) + rowSamples());
  }

  // All rows are there.
  void finish() const {
    streamFence();
    if (first_ > 0 || !c_.output.followsRows()) c_.output.convert(c_.work, c_.pDst, c_.nRoiHeight);
  }

 private:
  static constexpr size_t kBetweenRows = 3 * 2 * kGuard;  // samples

  static Conversion<T> withoutGuard(Conversion<T> c) {
    c.work = c.imageRow(0);
    c.layout.side = c.layout.above = 0;
    return c;
  }

  template <class Fill>
  void make(int y, T* pixels, RowCopies<T>& copies, Fill fill) {
    const size_t overwritten = 3 * overwrittenPixels(y);
    if (overwritten == 0) return fill(pixels, copies);
    RowCopies<T> none;
    fill(pixels, none);
    std::copy_n(beyond_ + kBetweenRows, overwritten, pixels);
    if (copies.plain) std::copy_n(pixels, rowSamples(), copies.plain);
  }

  size_t rowSamples() const { return 3 * c_.region.Wf; }

  // quirk: wrapped-blocks. The last block of the upper row of a pair overwrites the beginning of
  // the lower one, which earlier blocks have left there.
  size_t overwrittenPixels(int y) const {
    const bool isLower = ((y - first_) & 1) == 1;
    if (!isLower || c_.region.Wf <= BlockEnds<T>::kBlock) return 0;
    return std::max<size_t>(ends_.pixels(), 2 * kGuard) - 2 * kGuard;
  }

  void store(const T* samples, size_t n, T* to) const {
    const ptrdiff_t room = std::max<ptrdiff_t>(workEnd_ - to, 0);
    std::copy_n(samples, std::min(n, size_t(room)), to);
  }

  const Conversion<T>& c_;
  const Conversion<T> image_;
  const FinishedRows<T> finished_;
  const BlockEnds<T>& ends_;
  const T* workEnd_;
  int first_;
  std::unique_ptr<T[]> spare_;
  T beyond_[3 * BlockEnds<T>::kBlock] = {};  // of the row before
};

}  // namespace vistrel::core
