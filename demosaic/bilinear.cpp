#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithms.h"
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

template <class T>
class Bilinear {
 public:
  Bilinear(const DemosaicJob<T>& job, Arena& arena) : job_(job), ring_(job, 3, arena) {}

  auto sweep() {
    return sweepGuarded(job_, ring_, 1, [this](int y, RowSink<T>& sink) {
      kernels_.ofRow(job_.order, y)(ring_.template window<1>(y), ring_.columns(), sink);
    });
  }

 private:
  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  const PixelKernels<T, HalfRowWindow<T, 1>>& kernels_ = *VISTREL_BY_LEVEL(kBilinearKernels<T>);
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> bilinear() {
  return {makeDemosaic<T, Bilinear>, bilinearInPlace<T>};
}
VISTREL_DEMOSAIC_ALGORITHM(bilinear);

}  // namespace vistrel::core
