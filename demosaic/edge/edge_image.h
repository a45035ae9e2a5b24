// The edge demosaic's image in the work buffer.
#pragma once

#include "demosaic/job.h"
#include "demosaic/work_image.h"

namespace vistrel::core {

// Leaves the work buffer as if blocks of eight pixels by two rows had been written one after the
// other. What they compute beyond the end of a row goes to the right guard and on into the row
// below.
template <class T>
class EdgeImage final : public ImageSink<T>, public WorkMargins<T> {
 public:
  // The image lies two rows lower than with the other algorithms, and has no guard of its own.
  // Nothing is written beyond the end of the work buffer.
  EdgeImage(const Conversion<T>& c, Arena& arena)
      : image_(lower(c)), work_(image_, arena), spare_(arena.take<T>(rowSamples())) {}

  // Rows come in order, from y0 on.
  RowSink<T> row(int y) override { return isFollowed(y) ? work_.row(y) : RowSink<T>(spare_); }

  void finish(int y, RowSink<T>& sink) override {
    if (isFollowed(y))
      work_.finish(y, sink);
    else
      store(sink.pixels(), rowSamples(), image_.imageRow(y));
  }

  void guard(int, const MosaicRing<T>&, T*) override {}
  void beyond(int y, const T* samples, size_t n) override {
    store(samples, n, image_.imageRow(y) + rowSamples());
  }

  // Call this when all rows are completed.
  void finish() const {
    storeFence();
    if (image_.region.y0 > 0 || !image_.output.followsRows())
      image_.output.convert(image_.work - image_.layout.S * kGuard - 3 * kGuard, image_.pDst,
                            image_.nRoiHeight);
  }

 private:
  static Conversion<T> lower(Conversion<T> c) {
    c.work = c.imageRow(2);
    c.layout.side = c.layout.above = 0;
    return c;
  }

  // Whether the output follows the row.
  bool isFollowed(int y) const {
    return image_.region.y0 == 0 && y < static_cast<int>(image_.region.Hf);
  }

  size_t rowSamples() const { return 3 * image_.region.Wf; }

  void store(const T* samples, size_t n, T* to) const {
    const ptrdiff_t capacity = std::max<ptrdiff_t>(image_.workEnd - to, 0);
    std::copy_n(samples, std::min(n, static_cast<size_t>(capacity)), to);
  }

  const Conversion<T> image_;
  WorkImage<T> work_;
  T* spare_;
};

}  // namespace vistrel::core
