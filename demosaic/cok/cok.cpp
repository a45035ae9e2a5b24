#include "common/arith.h"
#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/cok/cok_ring.h"
#include "demosaic/conversion.h"
#include "demosaic/in_place.h"

#define VISTREL_BODY "demosaic/cok/cok_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
T stored(double v) {
  return static_cast<T>(base::clampTo(truncToInt(v), kLimit<T>));
}

template <class T>
void cokInPlace(const Conversion<T>& c) {
  scatterMosaic(c.region, c.sourceStride, c.pSrc, c.work);
  passInPlace(c.region, c.work, [](const InPlacePixel<T>& p) {
    if (!p.isGreen()) p.samples[kGreen] = static_cast<T>(base::Cok::green(p.sensed()));
  });
  passInPlace(c.region, c.work, [](const InPlacePixel<T>& p) {
    const auto m = p.sensed();
    const auto g = p.channel(kGreen);
    const auto hue = [&](int dx, int dy) {
      const auto ratio = base::Cok::hue(m(dx, dy), g(dx, dy));
      return static_cast<double>(ratio.colour) / ratio.green;
    };
    const double green = g(0, 0);
    if (p.isGreen()) {
      p.samples[p.own()] = stored<T>(base::Cok::along(green, hue));
      p.samples[p.opposite()] = stored<T>(base::Cok::across(green, hue));
    } else {
      p.samples[p.opposite()] = stored<T>(base::Cok::opposite(green, hue));
    }
  });
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

template <class T>
class CokDemosaic {
 public:
  CokDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : job_(job), ring_(job, 3, arena), hues_(ring_, arena) {}

  auto sweep() {
    return sweepGuarded(
        job_, ring_, 1, [this](int y, RowSink<T>& sink) { fill(y, sink); },
        stage(1, [this](int y) { findHues(y); }));
  }

 private:
  void findHues(int y) {
    kernels_.hues[ring_.mosaic().colourParity(y)](ring_.template window<1>(y), ring_.colourSites(y),
                                                  hues_.green(y), hues_.hues(y));
    hues_.guard(y);
  }
  void fill(int y, RowSink<T>& sink) const {
    kernels_.pixels.ofRow(job_.order, y)(hues_.around(y), ring_.columns(), sink);
  }

  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  CokRing<T> hues_;
  const CokKernels<T>& kernels_ = *VISTREL_BY_LEVEL(kCokKernels<T>);
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> cok() {
  return {makeDemosaic<T, CokDemosaic<T>>, cokInPlace<T>};
}
VISTREL_DEMOSAIC_ALGORITHM(cok);

}  // namespace vistrel::core
