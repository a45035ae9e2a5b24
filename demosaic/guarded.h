// The shape that the algorithms of the guarded layout share: spread the mosaic, fill the missing
// colours, convert. One sweep does all three, a row at a time.
#pragma once

#include <algorithm>

#include "common/sweep.h"
#include "demosaic/mosaic_rows.h"
#include "demosaic/work_buffer.h"
#include "frontend/registry.h"
#include "output/colour_output.h"

namespace vistrel {

// What the arguments of a conversion come to.
template <class T>
struct Conversion {
  Region region;
  const T* pSrc;
  size_t sourceStride;
  T* work;
  uint8_t* pDst;
  uint32_t nRoiHeight;
  const ColourOutput& output;
  GuardedLayout layout{region};

  T* imageRow(ptrdiff_t y) const { return work + layout.row(y); }
};

// Writes the guard from the mosaic as it was spread, before any colour is filled in.
template <class T>
class GuardWriter {
 public:
  GuardWriter(const Conversion<T>& c, const MosaicRows<T>& mosaic) : m_c(c), m_mosaic(mosaic) {}

  // The guard pixels that are copies of image row y.
  void row(int y) const {
    const int Hf = m_mosaic.height();
    besides(y, m_c.imageRow(y));
    if (y < 2) wholeRow(y, m_c.imageRow(y - 2));
    if (y >= Hf - 2) wholeRow(y, m_c.imageRow(y + 2));
  }

 private:
  void pixel(int y, ptrdiff_t x, T* row) const {
    const unsigned parity = unsigned(x) & 1;
    const bool isGreen = parity == m_mosaic.greenParity(y);
    const int channel = isGreen ? kGreen : m_mosaic.isRedRow(y) ? kRed : kBlue;
    std::fill_n(row + 3 * x, 3, T{0});
    row[3 * x + channel] = m_mosaic.half(y, parity)[(x - ptrdiff_t(parity)) / 2];
  }
  void besides(int y, T* row) const {
    const ptrdiff_t Wf = ptrdiff_t(m_mosaic.columns());
    for (ptrdiff_t x : {ptrdiff_t{-2}, ptrdiff_t{-1}, Wf, Wf + 1}) pixel(y, x, row);
  }
  void wholeRow(int y, T* row) const {
    for (ptrdiff_t x = -2; x < ptrdiff_t(m_mosaic.columns()) + 2; ++x) pixel(y, x, row);
  }

  const Conversion<T>& m_c;
  const MosaicRows<T>& m_mosaic;
};

// Runs an algorithm of one pass: pixelRow(window, y, pixels) fills image row y.
template <class T, class PixelRow>
void sweepOnePass(const Conversion<T>& c, PixelRow pixelRow) {
  MosaicRows<T> mosaic(c.region, c.pSrc, c.sourceStride);
  if (!mosaic) return;
  const GuardWriter<T> guard(c, mosaic);
  const int F = static_cast<int>(c.region.F);
  sweep(mosaic.height(),
        stage(0, [&](int y) { mosaic.load(y); }),
        stage(1, [&](int y) { mosaic.smooth(y); }),
        stage(1, [&](int y) {
          pixelRow(mosaic, y, c.imageRow(y));
          guard.row(y);
          if (c.output.followsRows() && y % F == F - 1)
            c.output.row(c.work, c.pDst, static_cast<size_t>(y / F));
        }));
  if (!c.output.followsRows()) c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

}  // namespace vistrel
