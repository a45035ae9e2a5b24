// The image in the work buffer, which passes its rows on to the output.
#pragma once

#include <algorithm>

#include "common/rows/arena.h"
#include "common/rows/row_sink.h"
#include "demosaic/conversion.h"

namespace vistrel::core {

// Routes completed rows to the work buffer and, as soon as a block row is complete, to the output.
// If the work buffer is larger than the caches, it and the result are written with non-temporal
// stores; rows are then made in a small buffer that the output reads.
template <class T>
class WorkImage final : public ImageSink<T>, private ChunkListener {
 public:
  WorkImage(const Conversion<T>& c, Arena& arena)
      : c_(c), F_(static_cast<int>(c.region.F)),
        bypassesCaches_(c.region.Hf * c.layout.S * sizeof(T) > kBypassBeyond) {
    if (!bypassesCaches_) return;
    rows_ = arena.take<T>(c.region.F * c.layout.S);
    result_ = arena.take<uint8_t>(c.output.rowBytes());
  }

  // The row includes the guard on both sides.
  RowSink<T> row(int y) override {
    const bool copiesRows = c_.output.copiesRows();
    T* const pixels = pixelsOf(y);
    if (!bypassesCaches_)
      return RowSink<T>(pixels, copiesRows ? reinterpret_cast<T*>(result(y)) : nullptr);
    RowSink<T> sink(pixels);
    const size_t side = c_.layout.side;
    sink.writeNonTemporal({c_.imageRow(y) - side, pixels - side}, pixels + 3 * c_.region.Wf + side);
    if (copiesRows) sink.writeResultNonTemporal({result(y), pixels});
    if (convertsChunks())
      sink.listen(this, y);
    else if (convertsBlocks() && F_ == 1)
      sink.fetchDestination({result(y), c_.output.pixelBytes()});
    return sink;
  }

  void finish(int y, RowSink<T>& sink) override {
    sink.finish(c_.region.Wf);
    if (convertsBlocks() && !convertsChunks() && y % F_ == F_ - 1) convert(y / F_);
  }

  // Call this when all rows are completed.
  void finish() const {
    if (bypassesCaches_) storeFence();
    if (!c_.output.followsRows()) c_.output.convert(c_.work, c_.pDst, c_.nRoiHeight);
  }

 private:
  T* pixelsOf(int y) const {
    return bypassesCaches_ ? rows_ + static_cast<size_t>(y % F_) * c_.layout.S + c_.layout.side
                           : c_.imageRow(y);
  }
  uint8_t* result(int y) const { return c_.pDst + static_cast<size_t>(y) * c_.output.rowBytes(); }

  bool convertsBlocks() const { return c_.output.followsRows() && !c_.output.copiesRows(); }
  bool convertsChunks() const {
    return bypassesCaches_ && convertsBlocks() && F_ == 1 && c_.output.writesEveryByte();
  }

  void written(int y, size_t begin, size_t end) override {
    const size_t bytes = c_.output.pixelBytes();
    while (begin < end) {
      const size_t n = std::min(end - begin, kChunk);
      convert(pixelsOf(y) + 3 * begin, result(y) + bytes * begin, n);
      begin += n;
    }
  }

  void convert(int y) const {
    convert(pixelsOf(y * F_), result(y), c_.output.rowBytes() / c_.output.pixelBytes());
  }

  // Converts n pixels of the result.
  void convert(const T* pixels, uint8_t* result, size_t n) const {
    if (!bypassesCaches_ || !c_.output.writesEveryByte()) return c_.output.part(pixels, result, n);
    c_.output.part(pixels, result_, n);
    NonTemporalCopy(result, result_).finish(result_ + n * c_.output.pixelBytes());
  }

  // Measured: ordinary stores win at 6 MB, non-temporal ones by a factor of two at 36 MB.
  static constexpr size_t kBypassBeyond = size_t{12} << 20;

  const Conversion<T>& c_;
  int F_;
  bool bypassesCaches_;
  T* rows_ = nullptr;
  uint8_t* result_ = nullptr;
};

}  // namespace vistrel::core
