// Routes the edge demosaic's rows to the work buffer and to the result.
#pragma once

#include "demosaic/edge/block_ends.h"
#include "demosaic/work_image.h"

namespace vistrel::core {

// Leaves the work buffer as blocks of eight pixels by two rows do, one after the other. What they
// compute beyond the end of a row goes to the right guard and on into the row below.
template <class T>
class EdgeOutput final : public ImageSink<T> {
 public:
  // workEnd: of the work buffer. Nothing is written there.
  EdgeOutput(const Conversion<T>& c, const BlockEnds<T>& ends, const T* workEnd)
      : c_(c), image_(withoutGuard(c)), work_(image_), ends_(ends), workEnd_(workEnd),
        first_(static_cast<int>(c.region.y0)), spare_(new (std::nothrow) T[rowSamples()]) {}

  explicit operator bool() const { return work_ && spare_; }

  // From y0 on, row by row.
  RowSink<T> row(int y) override {
    if (!isFollowed(y)) return RowSink<T>(spare_.get());
    const RowSink<T> sink = work_.row(y);
    return overwrittenPixels(y) ? RowSink<T>(sink.pixels()) : sink;
  }

  void finish(int y, RowSink<T>& sink) override {
    const size_t overwritten = 3 * overwrittenPixels(y);
    std::copy_n(beyond_ + kBetweenRows, overwritten, sink.pixels());
    if (isFollowed(y)) {
      if (overwritten) sink = work_.row(y);
      if (overwritten) sink.copyPixels(0, c_.region.Wf);
      work_.finish(y, sink);
    } else {
      store(sink.pixels(), rowSamples(), image_.imageRow(y));
    }
    ends_.compute(y, beyond_);
    store(beyond_, 3 * ends_.pixels(), image_.imageRow(y) + rowSamples());
  }

  // All rows are finished.
  void finish() const {
    storeFence();
    if (first_ > 0 || !c_.output.followsRows()) c_.output.convert(c_.work, c_.pDst, c_.nRoiHeight);
  }

 private:
  static constexpr size_t kBetweenRows = 3 * 2 * kGuard;  // samples

  static Conversion<T> withoutGuard(Conversion<T> c) {
    c.work = c.imageRow(0);
    c.layout.side = c.layout.above = 0;
    return c;
  }

  // The output follows the row.
  bool isFollowed(int y) const { return first_ == 0 && y < static_cast<int>(c_.region.Hf); }

  size_t rowSamples() const { return 3 * c_.region.Wf; }

  // quirk: wrapped-blocks. The last block of the upper row of a pair overwrites the beginning of
  // the lower one, which earlier blocks have left there.
  size_t overwrittenPixels(int y) const {
    const bool isLower = ((y - first_) & 1) == 1;
    if (!isLower || c_.region.Wf <= BlockEnds<T>::kBlock) return 0;
    return std::max<size_t>(ends_.pixels(), 2 * kGuard) - 2 * kGuard;
  }

  void store(const T* samples, size_t n, T* to) const {
    const ptrdiff_t capacity = std::max<ptrdiff_t>(workEnd_ - to, 0);
    std::copy_n(samples, std::min(n, size_t(capacity)), to);
  }

  const Conversion<T>& c_;
  const Conversion<T> image_;
  WorkImage<T> work_;
  const BlockEnds<T>& ends_;
  const T* workEnd_;
  int first_;
  std::unique_ptr<T[]> spare_;
  T beyond_[3 * BlockEnds<T>::kBlock] = {};  // of the row before
};

}  // namespace vistrel::core
