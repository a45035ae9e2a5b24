// The shape of the algorithms that first complete green, then find red and blue
// by it.
#pragma once

#include "demosaic/guarded.h"
#include "demosaic/in_place.h"

namespace vistrel::core {

// The half rows behind a row of pixels: the mosaic and finished green.
template <class T>
struct GreenFirstRows {
  HalfRowWindow<T, 2> mosaic;
  HalfRowWindow<T, 1> green;
};

template <class T>
struct GreenFirstPasses {
  // Green of the n red or blue sites of a row, by the column parity of these
  // sites.
  void (*green[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, T* green);
  PixelKernels<T, GreenFirstRows<T>> pixels;
};

// What each level compiles of such an algorithm: passes for any samples, and faster ones for
// samples of twelve bits at most.
template <class T>
struct GreenFirstKernels {
  GreenFirstPasses<T> anyBits, twelveBits;
};

// Finished green, a few rows at a time: computed at red and blue sites, the
// mosaic's elsewhere. Beyond the region it is zero where the mosaic has none.
template <class T>
class GreenRing {
 public:
  GreenRing(const MosaicRing<T>& mosaic, unsigned rows)
      : mosaic_(mosaic), rows_(rows), ring_(rows + 1, 1, mosaic.columns()) {
    if (ring_) std::fill_n(ring_.half(rows, 0) - 1, mosaic.columns() / 2 + 3, T{0});
  }

  explicit operator bool() const { return bool(ring_); }

  T* computed(int y) const { return ring_.half(unsigned(y) % rows_, 0); }

  void guard(int y) const {
    T* half = computed(y);
    half[-1] = half[mosaic_.halfSize(1 - mosaic_.greenParity(y))] = 0;
  }

  HalfRowWindow<T, 1> window(int y) const {
    HalfRowWindow<T, 1> w;
    for (int dy = -1; dy <= 1; ++dy) {
      const unsigned parity = mosaic_.greenParity(y + dy);
      const bool inside = 0 <= y + dy && y + dy < mosaic_.height();
      w.half[dy + 1][parity] = mosaic_.half(y + dy, parity);
      w.half[dy + 1][1 - parity] = inside ? computed(y + dy) : ring_.half(rows_, 0);
    }
    return w;
  }

 private:
  const MosaicRing<T>& mosaic_;
  unsigned rows_;
  HalfRowRing<T> ring_;  // the last row stays zero
};

template <class T>
void sweepGreenFirst(const Conversion<T>& c, const GreenFirstKernels<T>& kernels) {
  MosaicRing<T> mosaic(c.region, c.pSrc, c.sourceStride, 6, RowDepth::found);
  const GreenRing<T> green(mosaic, 3);
  if (!mosaic || !green) return;
  // Smoothing reaches one row further than the window.
  const auto passes = [&](int y) -> const GreenFirstPasses<T>& {
    return mosaic.depths().areTwelveBitsFrom(y - 3) ? kernels.twelveBits : kernels.anyBits;
  };
  sweepGuarded(
      c, mosaic, 1,
      [&](int y, RowSink<T>& sink) {
        passes(y).pixels.of[mosaic.greenParity(y)][mosaic.isRedRow(y)](
            {mosaic.template window<2>(y), green.window(y)}, mosaic.columns(), sink);
      },
      stage(2, [&](int y) {
        const unsigned parity = 1 - mosaic.greenParity(y);
        passes(y).green[parity](mosaic.template window<2>(y), mosaic.halfSize(parity),
                                green.computed(y));
        green.guard(y);
      }));
}

// Formulas: of one level, as they are applied to samples one by one.
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

}  // namespace vistrel::core
