#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/conversion.h"
#include "demosaic/guarded.h"
#include "demosaic/in_place.h"

#define VISTREL_BODY "demosaic/variable_gradients_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class Site, class T>
void fillMissing(const InPlacePixel<T>& p, int first, int second) {
  const auto missing = base::Missing<T, int>::at(Site{}, p.sensed(), 65535);
  p.samples[first] = static_cast<T>(missing.first);
  p.samples[second] = static_cast<T>(missing.second);
}

template <class T>
void fillAtGreen(const InPlacePixel<T>& p) {
  fillMissing<base::AtGreen>(p, p.own(), p.opposite());
}
template <class T>
void fillAtColour(const InPlacePixel<T>& p) {
  fillMissing<base::AtColour>(p, kGreen, p.opposite());
}

template <class T>
void variableGradientsInPlace(const Conversion<T>& c) {
  scatterMosaic(c.region, c.sourceStride, c.pSrc, c.work);
  passInPlace(c.region, c.work,
              [](const InPlacePixel<T>& p) { p.isGreen() ? fillAtGreen(p) : fillAtColour(p); });
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

template <class T>
class VariableGradients {
 public:
  VariableGradients(const DemosaicJob<T>& job, Arena& arena)
      : job_(job), ring_(job, 5, arena, DepthTracking::on) {}

  auto sweep() {
    return sweepGuarded(job_, ring_, 2, [this](int y, RowSink<T>& sink) {
      const bool isNarrow = ring_.depths().areTwelveBitsFrom(y - 3);
      const auto& kernels = isNarrow ? kernels_.twelveBits : kernels_.anyBits;
      kernels.ofRow(job_.order, y)(ring_.template window<2>(y), ring_.columns(), sink);
    });
  }

 private:
  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  const VariableGradientsKernels<T>& kernels_ = *VISTREL_BY_LEVEL(kVariableGradientsKernels<T>);
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> variableGradients() {
  return {makeDemosaic<T, VariableGradients<T>>, variableGradientsInPlace<T>};
}
VISTREL_DEMOSAIC_ALGORITHM(variableGradients);

}  // namespace vistrel::core
