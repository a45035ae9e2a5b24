#include "common/simd/simd.h"
#include "cpu/level.h"
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
void bilinear(const Conversion<T>& c) {
  if (isDegenerate(c.region)) return bilinearInPlace(c);
  const auto& rows = *VISTREL_BY_LEVEL(kBilinearKernels<T>);
  MosaicRing<T> ring(c.region, c.pSrc, c.sourceStride, 3);
  if (!ring) return;
  sweepGuarded(c, ring, 1, [&](int y, RowSink<T>& sink) {
    rows.ofRow(ring.mosaic(), y)(ring.template window<1>(y), ring.columns(), sink);
  });
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorBilinear, bilinear)

}  // namespace vistrel::core
