// The demosaic algorithms by name, and single steps of two of them, on pixels of the work buffer in
// the guarded layout.
#pragma once

#include <cstdint>

#include "common/work_layout.h"
#include "demosaic/demosaic.h"
#include "demosaic/in_place.h"
#include "demosaic/pixel_grouping_formulas-inl.h"
#include "demosaic/variable_gradients_formulas-inl.h"
#include "demosaic/work_buffer.h"
#include "vistrel/platform.h"
#include "vistrel/processor.h"

namespace vistrel::core {

#define VISTREL_DEMOSAIC(name, code)                                                              \
  inline void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,       \
                   uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,          \
                   uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {                     \
    demosaic(*findAlgorithm(code), nIndex, 0, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY, \
             nRoiWidth, nRoiHeight, pSrc, pDst);                                                  \
  }                                                                                               \
  inline void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,       \
                   uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,           \
                   uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst,  \
                   uint32_t nDstBits, uint32_t nSrcBits) {                                        \
    demosaic(*findAlgorithm(code), nIndex, 0, nImgWidth, nBayer, nBinning, nFormat, nLutMode,     \
             nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);                \
  }

VISTREL_DEMOSAIC(ImageColorBilinear, DM_BILINEAR)
VISTREL_DEMOSAIC(ImageColorNearNeighbor, DM_NEAR_NEIGHBOR)
VISTREL_DEMOSAIC(ImageColorGradientLaroche, DM_GRADIENT_LAROCHE)
VISTREL_DEMOSAIC(ImageColorGradientHamilton, DM_GRADIENT_HAMILTON)
VISTREL_DEMOSAIC(ImageColorVariableGradients, DM_VARIABLE_GRADIENTS)
VISTREL_DEMOSAIC(ImageColorHueCok, DM_HUE_COK)
VISTREL_DEMOSAIC(ImageColorHueKimmel, DM_HUE_KIMMEL)
VISTREL_DEMOSAIC(ImageColorPixelGrouping, DM_PIXEL_GROUPING)

#undef VISTREL_DEMOSAIC

// Takes nThreshold after nIndex.
inline void ImageColorDemosaicEx(uint32_t nIndex, auto... others) {
  demosaic(*findAlgorithm(DM_EDGE_EX), nIndex, others...);
}

template <class T>
void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const T* pSrc,
                      T* pWork) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  scatterMosaic(region, nImgWidth, pSrc, pWork);
}

template <class T>
InPlacePixel<T> pixelAt(T* pPixel, unsigned nStride, Site site) {
  return {pPixel, static_cast<ptrdiff_t>(nStride), Mosaic(site)};
}

// Steps of pixel grouping.

// The sites that nMode numbers: 0 blue, 1 green beside blue, 2 red, 3 green beside red.
constexpr Site kSitesOfMode[] = {SITE_B, SITE_GB, SITE_R, SITE_GR};

// Green at a red or blue site. pPixel points to the pixel's blue sample. nStride: samples per row.
template <class T>
T calcOneGreen(T* pPixel, unsigned nStride, unsigned nMode) {
  const auto p = pixelAt(pPixel, nStride, kSitesOfMode[nMode]);
  return static_cast<T>(base::PixelGrouping<T>::green(p.sensed()));
}

// Writes red to pFirst and blue to pSecond, using complete green; the one that the site senses
// becomes 0.
template <class T>
void calcOneRedBlu(T* pPixel, unsigned nStride, T* pFirst, T* pSecond, unsigned nMode) {
  using base::PixelGrouping;
  const auto p = pixelAt(pPixel, nStride, kSitesOfMode[nMode]);
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
constexpr auto calcOneRedBlu8 = &calcOneRedBlu<uint8_t>;
constexpr auto calcOneRedBlu16 = &calcOneRedBlu<uint16_t>;

// A colour in the middle of three positions, from their greens L1, L2, L3 and the colours V1, V3 of
// the outer two. If green rises or falls steadily, the colour follows it; otherwise it bends half
// as much as green.
inline int HueTransit(int L1, int L2, int L3, int V1, int V3) {
  return base::hueTransit(L1, L2, L3, V1, V3);
}

// One pixel of variable gradients.

// Write the two colours that a pixel lacks. nRowSamples: distance between two rows. nChannel: at a
// green site the colour of its row, at a red or blue site the colour of its diagonals.
template <class T>
void calcOneGreenCenter(T* pPixel, unsigned nRowSamples, unsigned nChannel) {
  const auto p = pixelAt(pPixel, nRowSamples, nChannel == kBlue ? SITE_GB : SITE_GR);
  const auto missing = base::Missing<T, int>::at(base::AtGreen{}, p.sensed(), 65535);
  p.samples[p.own()] = static_cast<T>(missing.first);
  p.samples[p.opposite()] = static_cast<T>(missing.second);
}
template <class T>
void calcOneRedBluCenter(T* pPixel, unsigned nRowSamples, unsigned nChannel) {
  const auto p = pixelAt(pPixel, nRowSamples, nChannel == kBlue ? SITE_R : SITE_B);
  const auto missing = base::Missing<T, int>::at(base::AtColour{}, p.sensed(), 65535);
  p.samples[kGreen] = static_cast<T>(missing.first);
  p.samples[p.opposite()] = static_cast<T>(missing.second);
}

}  // namespace vistrel::core
