// The shape that the algorithms of the guarded layout share: spread the mosaic, fill the missing
// colours, convert. One sweep does all three, a row at a time.
#pragma once

#include <algorithm>
#include <memory>
#include <new>

#include "common/pixel_row.h"
#include "common/sweep.h"
#include "demosaic/conversion.h"
#include "demosaic/mosaic_rows.h"

namespace vistrel {

// Writes the guard from the mosaic as it was spread, before any colour is filled in.
template <class T>
class GuardWriter {
 public:
  GuardWriter(const Conversion<T>& c, const MosaicRows<T>& mosaic) : m_c(c), m_mosaic(mosaic) {}

  // The guard pixels to the left and right of row y.
  void beside(int y, T* row) const {
    const ptrdiff_t Wf = ptrdiff_t(m_mosaic.columns());
    for (ptrdiff_t x : {ptrdiff_t{-2}, ptrdiff_t{-1}, Wf, Wf + 1}) pixel(y, x, row);
  }

  // The guard rows that are copies of row y.
  void aboveAndBelow(int y) const {
    if (y < 2) wholeRow(y, m_c.imageRow(y - 2));
    if (y >= m_mosaic.height() - 2) wholeRow(y, m_c.imageRow(y + 2));
  }

 private:
  void pixel(int y, ptrdiff_t x, T* row) const {
    const unsigned parity = unsigned(x) & 1;
    const bool isGreen = parity == m_mosaic.greenParity(y);
    const int channel = isGreen ? kGreen : m_mosaic.isRedRow(y) ? kRed : kBlue;
    std::fill_n(row + 3 * x, 3, T{0});
    row[3 * x + channel] = m_mosaic.half(y, parity)[(x - ptrdiff_t(parity)) / 2];
  }
  void wholeRow(int y, T* row) const {
    for (ptrdiff_t x = -2; x < ptrdiff_t(m_mosaic.columns()) + 2; ++x) pixel(y, x, row);
  }

  const Conversion<T>& m_c;
  const MosaicRows<T>& m_mosaic;
};

// Where a sweep puts its finished rows: into the work buffer, and on to the output as soon as a
// block row is complete. A work buffer larger than caches is written past them, and so is the
// result; rows are then made in a small buffer that the output reads.
template <class T>
class FinishedRows {
 public:
  explicit FinishedRows(const Conversion<T>& c)
      : m_c(c), m_F(static_cast<int>(c.region.F)),
        m_streams((c.region.Hf + 4) * c.layout.S * sizeof(T) > kStreamBeyond) {
    if (!m_streams) return;
    m_rows.reset(new (std::nothrow) T[c.region.F * c.layout.S]);
    m_result.reset(new (std::nothrow) uint8_t[c.output.rowBytes()]);
  }

  explicit operator bool() const { return !m_streams || (m_rows && m_result); }

  // Pixel 0 of row y, to be filled, with the guard pixels beside it.
  T* row(int y) const {
    return m_streams ? m_rows.get() + size_t(y % m_F) * m_c.layout.S + kSide : m_c.imageRow(y);
  }

  // To be served while row y is filled, the guard beside it before.
  RowCopies<T> copies(int y) const {
    RowCopies<T> copies;
    if (m_streams) copies.work = StreamCopy(m_c.imageRow(y) - kSide, row(y) - kSide);
    if (m_c.output.copiesRows()) {
      if (m_streams)
        copies.result = StreamCopy(result(y), row(y));
      else
        copies.plain = reinterpret_cast<T*>(result(y));
    }
    return copies;
  }

  // Row y is filled.
  void finish(int y, RowCopies<T>& copies) const {
    const T* const imageEnd = row(y) + m_c.layout.S - 2 * kSide;
    copies.work.finish(imageEnd + kSide);
    copies.result.finish(imageEnd);
    if (m_c.output.followsRows() && !m_c.output.copiesRows() && y % m_F == m_F - 1)
      convert(y / m_F);
  }

  void finishAll() const {
    if (m_streams) streamFence();
    if (!m_c.output.followsRows()) m_c.output.convert(m_c.work, m_c.pDst, m_c.nRoiHeight);
  }

 private:
  uint8_t* result(int y) const { return m_c.pDst + size_t(y) * m_c.output.rowBytes(); }

  void convert(int y) const {
    const T* blockRow = row(y * m_F);
    if (!m_streams || !m_c.output.writesEveryByte()) return m_c.output.row(blockRow, result(y));
    const size_t bytes = m_c.output.rowBytes();
    m_c.output.row(blockRow, m_result.get());
    StreamCopy(result(y), m_result.get()).finish(m_result.get() + bytes);
  }

  static constexpr size_t kSide = 3 * kGuard;
  // Measured: ordinary stores win at 6 MB, streaming ones by a factor of two at 36 MB.
  static constexpr size_t kStreamBeyond = size_t{12} << 20;

  const Conversion<T>& m_c;
  int m_F;
  bool m_streams;
  std::unique_ptr<T[]> m_rows;
  std::unique_ptr<uint8_t[]> m_result;
};

// The sweep of an algorithm: stages of its own between smoothing and the last one, which fills the
// pixels of a row: pixelRow(y, pixels, copies).
template <class T, class PixelRow, class... OwnStages>
void sweepGuarded(const Conversion<T>& c, MosaicRows<T>& mosaic, int reachOfLast, PixelRow pixelRow,
                  OwnStages... ownStages) {
  const FinishedRows<T> finished(c);
  if (!finished) return;
  const GuardWriter<T> guard(c, mosaic);
  sweep(mosaic.height(),
        stage(0, [&](int y) { mosaic.load(y); }),
        stage(1, [&](int y) { mosaic.smooth(y); }),
        ownStages...,
        stage(reachOfLast, [&](int y) {
          T* const row = finished.row(y);
          guard.beside(y, row);
          guard.aboveAndBelow(y);
          RowCopies<T> copies = finished.copies(y);
          pixelRow(y, row, copies);
          finished.finish(y, copies);
        }));
  finished.finishAll();
}

// Wf or Hf of less than 2: the guard has copies of what the work buffer held, so that the work is
// done in it, pass after pass.
inline bool isThin(const Region& region) { return region.Wf < 2 || region.Hf < 2; }

}  // namespace vistrel
