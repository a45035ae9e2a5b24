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

template <class T>
class Bilinear {
 public:
  Bilinear(const DemosaicJob<T>& job, Arena& arena) : job_(job), ring_(job, 3, arena) {}

  auto sweep() {
    return sweepGuarded(job_, ring_, 1, [this](int y, RowSink<T>& sink) {
      if (job_.direct) return storeDirectly(y, reinterpret_cast<uint8_t*>(sink.row()));
      const auto columns = static_cast<size_t>(job_.roi.width);
      kernels_.ofRow(job_.order, y)(windowAt(y, static_cast<size_t>(job_.roi.x)), columns, sink);
    });
  }

  static bool storesDirectly() {
    return VISTREL_BY_LEVEL(kDirectBilinear<T>)->of[0][0][0] != nullptr;
  }

 private:
  // The window around row y, from an even column on.
  HalfRowWindow<T, 1> windowAt(int y, size_t column) const {
    return windowOf<1>(
        y, [=, this](int row, unsigned parity) { return ring_.half(row, parity) + column / 2; });
  }

  void storeDirectly(int y, uint8_t* pixels) const {
    const DirectJob& d = *job_.direct;
    directKernels_.ofRow(d.format, job_.order, y)(windowAt(y, d.left), d.width, d.shift,
                                                  {pixels, d.sums ? *d.sums : PairSums{}},
                                                  ring_.nextSource());
  }

  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  const PixelKernels<T, HalfRowWindow<T, 1>>& kernels_ = *VISTREL_BY_LEVEL(kBilinearKernels<T>);
  const DirectKernels<HalfRowWindow<T, 1>>& directKernels_ = *VISTREL_BY_LEVEL(kDirectBilinear<T>);
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> bilinear() {
  return {makeDemosaic<T, Bilinear<T>>, bilinearInPlace<T>, Bilinear<T>::storesDirectly, true};
}
VISTREL_DEMOSAIC_ALGORITHM(bilinear);

}  // namespace vistrel::core
