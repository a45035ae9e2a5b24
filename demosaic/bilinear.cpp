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
      if (job_.finishing) return finish(y, reinterpret_cast<uint8_t*>(sink.row()));
      const auto columns = static_cast<size_t>(job_.roi.width);
      kernels_.ofRow(job_.order, y)(windowAt(y, static_cast<size_t>(job_.roi.x)), columns, sink);
    });
  }

  static bool finishes() { return VISTREL_BY_LEVEL(kFinishedBilinear<T>)->of[0][0][0] != nullptr; }

 private:
  // The window around row y, from an even column on.
  HalfRowWindow<T, 1> windowAt(int y, size_t column) const {
    return windowOf<1>(
        y, [=, this](int row, unsigned parity) { return ring_.half(row, parity) + column / 2; });
  }

  void finish(int y, uint8_t* pixels) const {
    const Finishing& f = *job_.finishing;
    finished_.ofRow(f.finish, job_.order, y)(windowAt(y, f.left), f.width, f.shift,
                                             {pixels, f.sums ? *f.sums : PairSums{}},
                                             ring_.nextSource());
  }

  DemosaicJob<T> job_;
  MosaicRing<T> ring_;
  const PixelKernels<T, HalfRowWindow<T, 1>>& kernels_ = *VISTREL_BY_LEVEL(kBilinearKernels<T>);
  const FinishedKernels<HalfRowWindow<T, 1>>& finished_ = *VISTREL_BY_LEVEL(kFinishedBilinear<T>);
};

}  // namespace

template <class T>
DemosaicAlgorithm<T> bilinear() {
  return {makeDemosaic<T, Bilinear<T>>, bilinearInPlace<T>, Bilinear<T>::finishes, true};
}
VISTREL_DEMOSAIC_ALGORITHM(bilinear);

}  // namespace vistrel::core
