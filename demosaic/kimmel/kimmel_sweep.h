// Kimmel's passes as one sweep.
#pragma once

#include "demosaic/kimmel/kimmel_ring.h"

namespace vistrel::core {

template <class T, class Real>
class KimmelSweep {
 public:
  // tail: the first column for which the second pass uses plain hues.
  KimmelSweep(const DemosaicJob<T>& job, const KimmelKernels<T, Real>& kernels, size_t tail,
              Arena& arena)
      : job_(job), kernels_(kernels), tail_(tail), ring_(job, 5, arena), rows_(ring_, arena),
        values_(1, 2, ring_.columns(), arena), samples_(1, kHalves, ring_.columns(), arena) {}

  auto sweep() {
    return sweepGuarded(
        job_, ring_, 1, [this](int y, RowSink<T>& sink) { finish(y, sink); },
        stage(0, [this](int y) { widen(y); }), stage(2, [this](int y) { fillGreen(y); }),
        stage(1, [this](int y) { fillOpposite(y); }));
  }

 private:
  using Rows = KimmelRing<T, Real>;
  enum Half : unsigned { kOwnAtGreen, kOppositeAtGreen, kGreenThere, kOppositeThere, kHalves };

  void widen(int y) {
    for (unsigned parity = 0; parity < 2; ++parity)
      kernels_.toReals(ring_.half(y, parity), -1,
                       static_cast<ptrdiff_t>(ring_.halfSize(parity)) + 1, rows_.half(y, parity));
  }

  void fillGreen(int y) {
    Real* const green = rows_.half(y, Rows::kGreenThere);
    Real* const hue = rows_.half(y, Rows::kHue);
    kernels_.green[rows_.colours(y)](rows_.mosaic(y), rows_.sites(y), green, hue);
    rows_.guard(y, {Rows::kGreenThere, Rows::kHue});
  }

  void fillOpposite(int y) {
    const unsigned parity = rows_.colours(y);
    const size_t sites = rows_.sites(y);
    Real* const colour = rows_.half(y, Rows::kOpposite);
    Real* const hue = rows_.half(y, Rows::kOppositeHue);
    const auto rows = rows_.diagonals(y);
    kernels_.opposite[parity](rows, 0, sites, colour, hue);
    kernels_.oppositeInTail[parity](rows, tail_ / 2, sites, colour, hue);
    rows_.guard(y, {Rows::kOpposite, Rows::kOppositeHue});
  }

  T* narrowed(const Real* reals, size_t n, Half half) {
    T* const samples = samples_.half(0, half);
    kernels_.toSamples(reals, n, samples);
    return samples;
  }

  void finish(int y, RowSink<T>& sink) {
    const unsigned g = rows_.greens(y), c = rows_.colours(y);
    const size_t greens = ring_.halfSize(g), sites = rows_.sites(y);
    Real *const own = values_.half(0, 0), *const opposite = values_.half(0, 1);
    kernels_.atGreen[g](rows_.cross(y), greens, own, opposite);
    CompleteHalves<T> halves;
    halves.own[g] = narrowed(own, greens, kOwnAtGreen);
    halves.green[g] = ring_.half(y, g);
    halves.opposite[g] = narrowed(opposite, greens, kOppositeAtGreen);
    halves.own[c] = ring_.half(y, c);
    halves.green[c] = narrowed(rows_.half(y, Rows::kGreenThere), sites, kGreenThere);
    halves.opposite[c] = narrowed(rows_.half(y, Rows::kOpposite), sites, kOppositeThere);
    kernels_.pixels.ofRow(job_.order, y)(halves, ring_.columns(), sink);
  }

  DemosaicJob<T> job_;
  const KimmelKernels<T, Real>& kernels_;
  size_t tail_;
  MosaicRing<T> ring_;
  Rows rows_;
  HalfRowRing<Real> values_;
  HalfRowRing<T> samples_;
};

}  // namespace vistrel::core
