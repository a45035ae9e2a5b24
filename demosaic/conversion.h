// What the argument lists of the demosaic functions come to.
#pragma once

#include "demosaic/demosaic.h"
#include "demosaic/work_buffer.h"
#include "output/colour_output.h"
#include "streams/registry.h"

namespace vistrel::core {

template <class T>
struct Conversion {
  Region region;
  uint32_t nBayer, nRoiX, nRoiY, nSrcBits;
  const T* pSrc;
  size_t sourceStride;
  T* work;
  WorkLayout layout;
  uint8_t* pDst;
  uint32_t nRoiHeight;
  const ColourOutput& output;

  T* imageRow(ptrdiff_t y) const { return work + layout.row(y); }
};

using LayoutOf = WorkLayout(const Region& region);

// Calls convert(c) with the Conversion that the arguments of a demosaic function describe, its
// image in the layout that layoutOf gives.
template <class Convert>
void withConversion(LayoutOf* layoutOf, Convert convert, uint32_t nIndex, uint32_t nImgWidth,
                    uint32_t nBayer, uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX,
                    uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                    uint8_t* pDst) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const WorkLayout layout = layoutOf(region);
  const ColourOutput output(nRoiWidth, nFormat, nBinning, layout.side != 0);
  uint8_t* const work = reinterpret_cast<uint8_t*>(g_pwBGRBuff[nIndex]);
  convert(Conversion<uint8_t>{region, nBayer, nRoiX, nRoiY, 8, pSrc, nImgWidth, work, layout, pDst,
                              nRoiHeight, output});
}
template <class Convert>
void withConversion(LayoutOf* layoutOf, Convert convert, uint32_t nIndex, uint32_t nImgWidth,
                    uint32_t nBayer, uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode,
                    uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                    const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const WorkLayout layout = layoutOf(region);
  const ColourOutput output(nRoiWidth, nSrcBits, nFormat, nLutMode, g_pwUserLUT[nIndex], nBinning,
                            nDstBits, layout.side != 0);
  convert(Conversion<uint16_t>{region, nBayer, nRoiX, nRoiY, nSrcBits, pSrc, nImgWidth,
                               g_pwBGRBuff[nIndex], layout, pDst, nRoiHeight, output});
}

// Both overloads of `name`, by the function template `convert`.
#define VISTREL_DEFINE_DEMOSAIC_IN(layoutOf, name, convert)                                        \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,               \
            uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,                  \
            uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {                             \
    withConversion(layoutOf, convert<uint8_t>, nIndex, nImgWidth, nBayer, nBinning, nFormat,       \
                   nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst);                               \
  }                                                                                                \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,               \
            uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,                   \
            uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst,          \
            uint32_t nDstBits, uint32_t nSrcBits) {                                                \
    withConversion(layoutOf, convert<uint16_t>, nIndex, nImgWidth, nBayer, nBinning, nFormat,      \
                   nLutMode, nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits); \
  }

#define VISTREL_DEFINE_DEMOSAIC(name, convert) \
  VISTREL_DEFINE_DEMOSAIC_IN(guardedLayout, name, convert)

}  // namespace vistrel::core
