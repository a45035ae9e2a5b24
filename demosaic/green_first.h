// The common form of algorithms that complete green first and compute red and blue from it.
#pragma once

#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first_kernels.h"
#include "demosaic/guarded.h"
#include "demosaic/in_place.h"

namespace vistrel::core {

// A few rows of complete green: computed at red and blue sites, the mosaic's elsewhere. Beyond the
// region it is zero where the mosaic senses another colour.
template <class T>
class GreenRing {
 public:
  GreenRing(const MosaicRing<T>& ring, unsigned rows, Arena& arena)
      : ring_(ring), rows_(rows), green_(rows + 1, 1, ring.columns(), arena) {}

  T* computed(int y) const { return green_.at(static_cast<unsigned>(y) % rows_, 0); }

  void guard(int y) const {
    T* half = computed(y);
    half[-1] = half[ring_.colourSites(y)] = 0;
  }

  HalfRowWindow<T, 1> window(int y) const {
    return windowOf<1>(y, [this](int row, unsigned parity) { return half(row, parity); });
  }

 private:
  const T* half(int y, unsigned columnParity) const {
    if (columnParity == ring_.mosaic().greenParity(y)) return ring_.half(y, columnParity);
    return 0 <= y && y < ring_.height() ? computed(y) : green_.at(rows_, 0);
  }

  const MosaicRing<T>& ring_;
  unsigned rows_;
  HalfRowRing<T> green_;  // the last row stays zero
};

// kernels() returns those of the current level.
template <class T, const GreenFirstKernels<T>& (*kernels)()>
class GreenFirst {
 public:
  GreenFirst(const DemosaicJob<T>& job, Arena& arena)
      : job_(job), ring_(job, 6, arena, DepthTracking::on), green_(ring_, 3, arena) {}

  auto sweep() {
    return sweepGuarded(
        job_, ring_, 1, [this](int y, RowSink<T>& sink) { fill(y, sink); },
        stage(2, [this](int y) { fillGreen(y); }));
  }

 private:
  // Smoothing reaches one row further than the window.
  const GreenFirstPasses<T>& passes(int y) const {
    return ring_.depths().areTwelveBitsFrom(y - 3) ? kernels_.twelveBits : kernels_.anyBits;
  }

  void fillGreen(int y) {
    passes(y).green[ring_.mosaic().colourParity(y)](ring_.template window<2>(y),
                                                    ring_.colourSites(y), green_.computed(y));
    green_.guard(y);
  }

  void fill(int y, RowSink<T>& sink) const {
    passes(y).pixels.ofRow(job_.order, y)({ring_.template window<2>(y), green_.window(y)},
                                          ring_.columns(), sink);
  }

  DemosaicJob<T> job_;
  const GreenFirstKernels<T>& kernels_ = kernels();
  MosaicRing<T> ring_;
  GreenRing<T> green_;
};

// Formulas: a level's formulas, applied to single samples.
template <class Formulas, class T>
void greenFirstInPlace(const Conversion<T>& c) {
  scatterMosaic(c.region, c.sourceStride, c.pSrc, c.work);
  passInPlace(c.region, c.work, [](const InPlacePixel<T>& p) {
    if (!p.isGreen()) p.samples[kGreen] = static_cast<T>(Formulas::green(p.sensed()));
  });
  passInPlace(c.region, c.work, [](const InPlacePixel<T>& p) {
    const auto m = p.sensed();
    const auto g = p.channel(kGreen);
    if (p.isGreen()) {
      p.samples[p.own()] = static_cast<T>(Formulas::along(m, g));
      p.samples[p.opposite()] = static_cast<T>(Formulas::across(m, g));
    } else {
      p.samples[p.opposite()] = static_cast<T>(Formulas::opposite(m, g));
    }
  });
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

template <class Formulas, class T, const GreenFirstKernels<T>& (*kernels)()>
DemosaicAlgorithm<T> greenFirst() {
  return {makeDemosaic<T, GreenFirst<T, kernels>>, greenFirstInPlace<Formulas, T>};
}

}  // namespace vistrel::core
