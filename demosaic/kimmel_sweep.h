// Kimmel's passes as one sweep.
#pragma once

#include "demosaic/kimmel_rows.h"

namespace vistrel {

template <class T, class Real>
class KimmelSweep {
 public:
  // tail: the column from which the second pass takes plain hues.
  KimmelSweep(const Conversion<T>& c, const KimmelKernels<T, Real>& kernels, size_t tail)
      : m_c(c), m_kernels(kernels), m_tail(tail), m_mosaic(c.region, c.pSrc, c.sourceStride, 5),
        m_rows(m_mosaic), m_values(1, 2, c.region.Wf), m_samples(1, kHalves, c.region.Wf) {}

  void run() {
    if (!m_mosaic || !m_rows || !m_values || !m_samples) return;
    sweepGuarded(
        m_c, m_mosaic, 1,
        [&](int y, T* pixels, RowCopies<T>& copies) { finish(y, pixels, copies); },
        stage(0, [&](int y) { widen(y); }), stage(2, [&](int y) { fillGreen(y); }),
        stage(1, [&](int y) { fillOpposite(y); }));
  }

 private:
  using Rows = KimmelRows<T, Real>;
  enum Half : unsigned { kOwnAtGreen, kOppositeAtGreen, kGreenThere, kOppositeThere, kHalves };

  void widen(int y) {
    for (unsigned parity = 0; parity < 2; ++parity)
      m_kernels.toReals(m_mosaic.half(y, parity), -1,
                        static_cast<ptrdiff_t>(m_mosaic.halfSize(parity)) + 1,
                        m_rows.half(y, parity));
  }

  void fillGreen(int y) {
    Real* const green = m_rows.half(y, Rows::kGreenThere);
    Real* const hue = m_rows.half(y, Rows::kHue);
    m_kernels.green[m_rows.colours(y)](m_rows.mosaic(y), m_rows.sites(y), green, hue);
    m_rows.guard(y, {Rows::kGreenThere, Rows::kHue});
  }

  void fillOpposite(int y) {
    const unsigned parity = m_rows.colours(y);
    const size_t sites = m_rows.sites(y);
    Real* const colour = m_rows.half(y, Rows::kOpposite);
    Real* const hue = m_rows.half(y, Rows::kOppositeHue);
    const auto rows = m_rows.diagonals(y);
    m_kernels.opposite[parity](rows, 0, sites, colour, hue);
    m_kernels.oppositeInTail[parity](rows, m_tail / 2, sites, colour, hue);
    m_rows.guard(y, {Rows::kOpposite, Rows::kOppositeHue});
  }

  T* narrowed(const Real* reals, size_t n, Half half) {
    T* const samples = m_samples.half(0, half);
    m_kernels.toSamples(reals, n, samples);
    return samples;
  }

  void finish(int y, T* pixels, RowCopies<T>& copies) {
    const unsigned g = m_rows.greens(y), c = m_rows.colours(y);
    const size_t greens = m_mosaic.halfSize(g), sites = m_rows.sites(y);
    Real *const own = m_values.half(0, 0), *const opposite = m_values.half(0, 1);
    m_kernels.atGreen[g](m_rows.cross(y), greens, own, opposite);
    FinishedHalves<T> halves;
    halves.own[g] = narrowed(own, greens, kOwnAtGreen);
    halves.green[g] = m_mosaic.half(y, g);
    halves.opposite[g] = narrowed(opposite, greens, kOppositeAtGreen);
    halves.own[c] = m_mosaic.half(y, c);
    halves.green[c] = narrowed(m_rows.half(y, Rows::kGreenThere), sites, kGreenThere);
    halves.opposite[c] = narrowed(m_rows.half(y, Rows::kOpposite), sites, kOppositeThere);
    m_kernels.pixels.of[g][m_mosaic.isRedRow(y)](halves, m_mosaic.columns(), pixels, copies);
  }

  const Conversion<T>& m_c;
  const KimmelKernels<T, Real>& m_kernels;
  size_t m_tail;
  MosaicRows<T> m_mosaic;
  Rows m_rows;
  HalfRowRing<Real> m_values;
  HalfRowRing<T> m_samples;
};

}  // namespace vistrel
