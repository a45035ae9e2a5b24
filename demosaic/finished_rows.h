// The way of a finished row: into the work buffer, and on to the output.
#pragma once

#include <algorithm>
#include <memory>
#include <new>

#include "common/pixel_row.h"
#include "demosaic/conversion.h"

namespace vistrel {

// Where a sweep puts its finished rows: into the work buffer, and on to the output as soon as a
// block row is complete. A work buffer larger than caches is written past them, and so is the
// result; rows are then made in a small buffer that the output reads.
template <class T>
class FinishedRows final : private PieceReader {
 public:
  explicit FinishedRows(const Conversion<T>& c)
      : m_c(c), m_F(static_cast<int>(c.region.F)),
        m_streams(c.region.Hf * c.layout.S * sizeof(T) > kStreamBeyond) {
    if (!m_streams) return;
    m_rows.reset(new (std::nothrow) T[c.region.F * c.layout.S]);
    m_result.reset(new (std::nothrow) uint8_t[c.output.rowBytes()]);
  }

  explicit operator bool() const { return !m_streams || (m_rows && m_result); }

  // Pixel 0 of row y, to be filled, with the guard beside it.
  T* row(int y) const {
    return m_streams ? m_rows.get() + size_t(y % m_F) * m_c.layout.S + m_c.layout.side
                     : m_c.imageRow(y);
  }

  // To be served while row y is filled, the guard beside it before.
  RowCopies<T> copies(int y) const {
    RowCopies<T> copies;
    if (m_streams)
      copies.work = StreamCopy(m_c.imageRow(y) - m_c.layout.side, row(y) - m_c.layout.side);
    if (m_c.output.copiesRows()) {
      if (m_streams)
        copies.result = StreamCopy(result(y), row(y));
      else
        copies.plain = reinterpret_cast<T*>(result(y));
    }
    if (m_streams && convertsBlocks() && m_F == 1) {
      if (m_c.output.writesEveryByte()) {
        copies.reader = this;
        copies.y = y;
      } else {
        copies.changedResult = FetchAhead(result(y), m_c.output.pixelBytes());
      }
    }
    return copies;
  }

  // Row y is filled.
  void finish(int y, RowCopies<T>& copies) const {
    const T* const imageEnd = row(y) + 3 * m_c.region.Wf;
    copies.work.finish(imageEnd + m_c.layout.side);
    copies.result.finish(imageEnd);
    if (copies.reader)
      copies.lastPiece(m_c.region.Wf);
    else if (convertsBlocks() && y % m_F == m_F - 1)
      convert(y / m_F);
  }

  void finishAll() const {
    if (m_streams) streamFence();
    if (!m_c.output.followsRows()) m_c.output.convert(m_c.work, m_c.pDst, m_c.nRoiHeight);
  }

 private:
  uint8_t* result(int y) const { return m_c.pDst + size_t(y) * m_c.output.rowBytes(); }

  bool convertsBlocks() const { return m_c.output.followsRows() && !m_c.output.copiesRows(); }

  void read(int y, size_t begin, size_t end) const override {
    const size_t bytes = m_c.output.pixelBytes();
    while (begin < end) {
      const size_t n = std::min(end - begin, kPiece);
      convert(row(y) + 3 * begin, result(y) + bytes * begin, n);
      begin += n;
    }
  }

  void convert(int y) const {
    convert(row(y * m_F), result(y), m_c.output.rowBytes() / m_c.output.pixelBytes());
  }

  // n pixels of the result.
  void convert(const T* pixels, uint8_t* result, size_t n) const {
    if (!m_streams || !m_c.output.writesEveryByte()) return m_c.output.part(pixels, result, n);
    m_c.output.part(pixels, m_result.get(), n);
    StreamCopy(result, m_result.get()).finish(m_result.get() + n * m_c.output.pixelBytes());
  }

  // Measured: ordinary stores win at 6 MB, streaming ones by a factor of two at 36 MB.
  static constexpr size_t kStreamBeyond = size_t{12} << 20;

  const Conversion<T>& m_c;
  int m_F;
  bool m_streams;
  std::unique_ptr<T[]> m_rows;
  std::unique_ptr<uint8_t[]> m_result;
};

}  // namespace vistrel
