// The way of the edge demosaic's rows into the work buffer and the result.
#pragma once

#include "demosaic/block_ends.h"
#include "demosaic/finished_rows.h"

namespace vistrel {

// Leaves the work buffer as blocks of eight pixels by two rows do, one after the other. What they
// compute beyond the end of a row goes to the right guard and on into the row below.
template <class T>
class EdgeOutput {
 public:
  // workEnd: of the work buffer. Nothing is written there.
  EdgeOutput(const Conversion<T>& c, const BlockEnds<T>& ends, const T* workEnd)
      : m_c(c), m_image(withoutGuard(c)), m_finished(m_image), m_ends(ends), m_workEnd(workEnd),
        m_first(static_cast<int>(c.region.y0)), m_spare(new (std::nothrow) T[rowSamples()]) {}

  explicit operator bool() const { return m_finished && m_spare; }

  // From y0 on, row by row. fill(pixels, copies) makes the pixels of row y.
  template <class Fill>
  void row(int y, Fill fill) {
    const bool isFollowed = m_first == 0 && y < static_cast<int>(m_c.region.Hf);
    T* const pixels = isFollowed ? m_finished.row(y) : m_spare.get();
    RowCopies<T> copies = isFollowed ? m_finished.copies(y) : RowCopies<T>();
    make(y, pixels, copies, fill);
    if (isFollowed)
      m_finished.finish(y, copies);
    else
      store(pixels, rowSamples(), m_image.imageRow(y));
    m_ends.compute(y, m_beyond);
    store(m_beyond, 3 * m_ends.pixels(), m_image.imageRow(y) + rowSamples());
  }

  // All rows are there.
  void finish() const {
    streamFence();
    if (m_first > 0 || !m_c.output.followsRows())
      m_c.output.convert(m_c.work, m_c.pDst, m_c.nRoiHeight);
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
    std::copy_n(m_beyond + kBetweenRows, overwritten, pixels);
    if (copies.plain) std::copy_n(pixels, rowSamples(), copies.plain);
  }

  size_t rowSamples() const { return 3 * m_c.region.Wf; }

  // quirk: wrapped-blocks. The last block of the upper row of a pair overwrites the beginning of
  // the lower one, which earlier blocks have left there.
  size_t overwrittenPixels(int y) const {
    const bool isLower = ((y - m_first) & 1) == 1;
    if (!isLower || m_c.region.Wf <= BlockEnds<T>::kBlock) return 0;
    return std::max<size_t>(m_ends.pixels(), 2 * kGuard) - 2 * kGuard;
  }

  void store(const T* samples, size_t n, T* to) const {
    const ptrdiff_t room = std::max<ptrdiff_t>(m_workEnd - to, 0);
    std::copy_n(samples, std::min(n, size_t(room)), to);
  }

  const Conversion<T>& m_c;
  const Conversion<T> m_image;
  const FinishedRows<T> m_finished;
  const BlockEnds<T>& m_ends;
  const T* m_workEnd;
  int m_first;
  std::unique_ptr<T[]> m_spare;
  T m_beyond[3 * BlockEnds<T>::kBlock] = {};  // of the row before
};

}  // namespace vistrel
