#include "common/arith.h"
#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/conversion.h"
#include "demosaic/hue_ring.h"
#include "demosaic/in_place.h"

#define VISTREL_BODY "demosaic/cok_rows-inl.h"
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
      return g(dx, dy) == 0 ? 0.0 : double(m(dx, dy)) / g(dx, dy);
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
void cok(const Conversion<T>& c) {
  if (isDegenerate(c.region)) return cokInPlace(c);
  const CokKernels<T>& kernels = *VISTREL_BY_LEVEL(kCok<T>);
  MosaicRing<T> ring(c.region, c.pSrc, c.sourceStride, 3);
  const HueRing<T> rows(ring);
  if (!ring || !rows) return;
  sweepGuarded(
      c, ring, 1,
      [&](int y, RowSink<T>& sink) {
        kernels.pixels.ofRow(ring.mosaic(), y)(rows.around(y), ring.columns(), sink);
      },
      stage(1, [&](int y) {
        kernels.hues[ring.mosaic().colourParity(y)](ring.template window<1>(y), ring.colourSites(y),
                                                    rows.green(y), rows.hues(y));
        rows.guard(y);
      }));
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC(ImageColorHueCok, cok)

}  // namespace vistrel::core
