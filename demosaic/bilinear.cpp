#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/guarded.h"
#include "demosaic/in_place.h"

#define VISTREL_BODY "demosaic/bilinear_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T>
void bilinearInPlace(const Conversion<T>& c) {
  using base::Bilinear;
  scatterMosaic(c.region, c.sourceStride, c.pSrc, c.work);
  passInPlace(c.region, c.work, [](const InPlacePixel<T>& p) {
    const auto m = p.sensed();
    if (p.isGreen()) {
      p.samples[p.own()] = static_cast<T>(Bilinear::along(m));
      p.samples[p.opposite()] = static_cast<T>(Bilinear::across(m));
    } else {
      p.samples[kGreen] = static_cast<T>(Bilinear::green(m));
      p.samples[p.opposite()] = static_cast<T>(Bilinear::opposite(m));
    }
  });
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

// The rows around row y, from an even column on.
template <class T>
HalfRowWindow<T, 1> windowAt(const MosaicRing<T>& ring, int y, size_t column) {
  return windowOf<1>(
      y, [&ring, column](int row, unsigned parity) { return ring.half(row, parity) + column / 2; });
}

template <class T>
class Bilinear {
 public:
  Bilinear(const DemosaicJob<T>& job, Arena& arena) : job_(job), ring_(job, 3, arena) {}

  auto sweep() {
    return sweepGuarded(job_, ring_, 1, [this](int y, RowSink<T>& sink) {
      kernels_.ofRow(job_.order, y)(windowAt(ring_, y, static_cast<size_t>(job_.roi.x)),
                                    static_cast<size_t>(job_.roi.width), sink);
    });
  }

 private:
  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  const PixelKernels<T, HalfRowWindow<T, 1>>& kernels_ = *VISTREL_BY_LEVEL(kBilinearKernels<T>);
};

template <class T>
class DirectBilinear {
 public:
  DirectBilinear(const DemosaicJob<T>& job, Arena& arena) : job_(job), ring_(job, 3, arena) {}

  auto sweep() {
    return sweepSmoothed(job_, ring_, stage(1, [this](int y) {
                           const DirectJob& d = *job_.direct;
                           DirectRowSink sink = d.image.row(y);
                           sink.fetch(ring_.nextSource());
                           kernels_.ofRow(d.format, job_.order, y)(windowAt(ring_, y, d.left),
                                                                   d.width, d.shift, sink);
                           d.image.finish(y);
                         }));
  }

  static bool hasKernels() { return VISTREL_BY_LEVEL(kDirectBilinear<T>)->of[0][0][0] != nullptr; }

 private:
  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  const DirectKernels<HalfRowWindow<T, 1>>& kernels_ = *VISTREL_BY_LEVEL(kDirectBilinear<T>);
};

template <class T>
RowProcess<T>* makeBilinear(const DemosaicJob<T>& job, Arena& arena) {
  return job.direct ? makeDemosaic<T, DirectBilinear<T>>(job, arena)
                    : makeDemosaic<T, Bilinear<T>>(job, arena);
}

}  // namespace

template <class T>
DemosaicAlgorithm<T> bilinear() {
  return {makeBilinear<T>, bilinearInPlace<T>, DirectBilinear<T>::hasKernels, true};
}
VISTREL_DEMOSAIC_ALGORITHM(bilinear);

}  // namespace vistrel::core
