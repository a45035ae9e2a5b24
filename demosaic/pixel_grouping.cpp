#include "demosaic/by_name.h"

#include "common/arith.h"
#include "common/depth.h"
#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithms.h"
#include "demosaic/conversion.h"
#include "demosaic/green_first.h"

#define VISTREL_BODY "demosaic/pixel_grouping_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

using base::PixelGrouping;

template <class T>
InPlacePixel<T> pixelAt(T* pPixel, unsigned nStride, unsigned nMode) {
  constexpr Site kSites[] = {SITE_B, SITE_GB, SITE_R, SITE_GR};
  return {pPixel, static_cast<ptrdiff_t>(nStride), Mosaic(kSites[nMode])};
}

template <class T>
T greenOf(const InPlacePixel<T>& p) {
  return static_cast<T>(PixelGrouping<T>::green(p.sensed()));
}

template <class T>
void redAndBlueOf(const InPlacePixel<T>& p, T* pFirst, T* pSecond) {
  const auto m = p.sensed();
  const auto g = p.channel(kGreen);
  int value[3] = {};
  if (p.isGreen()) {
    value[p.own()] = PixelGrouping<T>::along(m, g);
    value[p.opposite()] = PixelGrouping<T>::across(m, g);
  } else {
    value[p.opposite()] = PixelGrouping<T>::opposite(m, g);
  }
  *pFirst = static_cast<T>(value[kRed]);
  *pSecond = static_cast<T>(value[kBlue]);
}

template <class T>
class GroupingDemosaic : public GreenFirst<T> {
 public:
  GroupingDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : GreenFirst<T>(job, *VISTREL_BY_LEVEL(kPixelGroupingKernels<T>), arena) {}
};

}  // namespace

uint8_t calcOneGreen(uint8_t* pPixel, unsigned nStride, unsigned nMode) {
  return greenOf(pixelAt(pPixel, nStride, nMode));
}

uint16_t calcOneGreen(uint16_t* pPixel, unsigned nStride, unsigned nMode) {
  return greenOf(pixelAt(pPixel, nStride, nMode));
}

void calcOneRedBlu8(uint8_t* pPixel, unsigned nStride, uint8_t* pFirst, uint8_t* pSecond,
                    unsigned nMode) {
  redAndBlueOf(pixelAt(pPixel, nStride, nMode), pFirst, pSecond);
}

void calcOneRedBlu16(uint16_t* pPixel, unsigned nStride, uint16_t* pFirst, uint16_t* pSecond,
                     unsigned nMode) {
  redAndBlueOf(pixelAt(pPixel, nStride, nMode), pFirst, pSecond);
}

int HueTransit(int L1, int L2, int L3, int V1, int V3) {
  return base::hueTransit(L1, L2, L3, V1, V3);
}

template <class T>
DemosaicAlgorithm<T> pixelGrouping() {
  return {makeDemosaic<T, GroupingDemosaic>, greenFirstInPlace<PixelGrouping<T>, T>};
}
VISTREL_DEMOSAIC_ALGORITHM(pixelGrouping);

}  // namespace vistrel::core
