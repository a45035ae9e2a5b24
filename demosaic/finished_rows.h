// The way of a finished row: into the work buffer, and on to the output.
#pragma once

#include <algorithm>
#include <memory>
#include <new>

#include "common/rows/pixel_row.h"
#include "demosaic/conversion.h"

namespace vistrel::core {

// Where a sweep puts its finished rows: into the work buffer, and on to the output as soon as a
// block row is complete. A work buffer larger than caches is written past them, and so is the
// result; rows are then made in a small buffer that the output reads.
template <class T>
class FinishedRows final : private PieceReader {
 public:
  explicit FinishedRows(const Conversion<T>& c)
      : c_(c), F_(static_cast<int>(c.region.F)),
        streams_(c.region.Hf * c.layout.S * sizeof(T) > kStreamBeyond) {
    if (!streams_) return;
    rows_.reset(new (std::nothrow) T[c.region.F * c.layout.S]);
    result_.reset(new (std::nothrow) uint8_t[c.output.rowBytes()]);
  }

  explicit operator bool() const { return !streams_ || (rows_ && result_); }

  // Pixel 0 of row y, to be filled, with the guard beside it.
  T* row(int y) const {
    return streams_ ? rows_.get() + size_t(y % F_) * c_.layout.S + c_.layout.side : c_.imageRow(y);
  }

  // To be served while row y is filled, the guard beside it before.
  RowCopies<T> copies(int y) const {
    RowCopies<T> copies;
    if (streams_)
      copies.work = StreamCopy(c_.imageRow(y) - c_.layout.side, row(y) - c_.layout.side);
    if (c_.output.copiesRows()) {
      if (streams_)
        copies.result = StreamCopy(result(y), row(y));
      else
        copies.plain = reinterpret_cast<T*>(result(y));
    }
    if (streams_ && convertsBlocks() && F_ == 1) {
      if (c_.output.writesEveryByte()) {
        copies.reader = this;
        copies.y = y;
      } else {
        copies.changedResult = FetchAhead(result(y), c_.output.pixelBytes());
      }
    }
    return copies;
  }

  // Row y is filled.
  void finish(int y, RowCopies<T>& copies) const {
    const T* const imageEnd = row(y) + 3 * c_.region.Wf;
    copies.work.finish(imageEnd + c_.layout.side);
    copies.result.finish(imageEnd);
    if (copies.reader)
      copies.lastPiece(c_.region.Wf);
    else if (convertsBlocks() && y % F_ == F_ - 1)
      convert(y / F_);
  }

  void finishAll() const {
    if (streams_) streamFence();
    if (!c_.output.followsRows()) c_.output.convert(c_.work, c_.pDst, c_.nRoiHeight);
  }

 private:
  uint8_t* result(int y) const { return c_.pDst + size_t(y) * c_.output.rowBytes(); }

  bool convertsBlocks() const { return c_.output.followsRows() && !c_.output.copiesRows(); }

  void read(int y, size_t begin, size_t end) const override {
    const size_t bytes = c_.output.pixelBytes();
    while (begin < end) {
      const size_t n = std::min(end - begin, kPiece);
      convert(row(y) + 3 * begin, result(y) + bytes * begin, n);
      begin += n;
    }
  }

  void convert(int y) const {
    convert(row(y * F_), result(y), c_.output.rowBytes() / c_.output.pixelBytes());
  }

  // n pixels of the result.
  void convert(const T* pixels, uint8_t* result, size_t n) const {
    if (!streams_ || !c_.output.writesEveryByte()) return c_.output.part(pixels, result, n);
    c_.output.part(pixels, result_.get(), n);
    StreamCopy(result, result_.get()).finish(result_.get() + n * c_.output.pixelBytes());
  }

  // Measured: ordinary stores win at 6 MB, streaming ones by a factor of two at 36 MB.
  static constexpr size_t kStreamBeyond = size_t{12} << 20;

  const Conversion<T>& c_;
  int F_;
  bool streams_;
  std::unique_ptr<T[]> rows_;
  std::unique_ptr<uint8_t[]> result_;
};

}  // namespace vistrel::core
