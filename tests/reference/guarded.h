// The common form of the functions that work in place on the guarded work buffer.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/reference/demosaic.h"
#include "tests/reference/output.h"
#include "tests/reference/registry.h"

namespace reference {

constexpr int kBlue = 0, kGreen = 1, kRed = 2;

enum Site { SITE_GR, SITE_R, SITE_B, SITE_GB };

inline bool isGreen(Site site) { return site == SITE_GR || site == SITE_GB; }

// The region as requested, in binned pixels, and at full resolution; S is the row stride of the
// guarded layout, in samples.
struct Region {
  uint32_t nBayer, nRoiX, nRoiY, nRoiWidth, nRoiHeight;
  uint32_t F, Wf, Hf, x0, y0;
  ptrdiff_t S;

  Region(uint32_t bayer, uint32_t nBinning, uint32_t roiX, uint32_t roiY, uint32_t roiWidth,
         uint32_t roiHeight)
      : nBayer(bayer), nRoiX(roiX), nRoiY(roiY), nRoiWidth(roiWidth), nRoiHeight(roiHeight),
        F(nBinning + 1), Wf(F * roiWidth), Hf(F * roiHeight), x0(F * roiX), y0(F * roiY),
        S(ptrdiff_t{3} * Wf + 12) {}

  // Image pixel (i, j) lies at sensor position (x0 + i, y0 + j).
  Site siteOf(uint32_t i, uint32_t j) const {
    const uint32_t r = (nBayer + y0 + j) & 1;
    const uint32_t c = ((nBayer >> 1) + x0 + i) & 1;
    if (r == 0) return c == 0 ? SITE_GR : SITE_R;
    return c == 0 ? SITE_B : SITE_GB;
  }
};

// Calls visit(site, first sample of the pixel) for every image pixel, row by row.
template <class T, class Visit>
void forEachPixel(const Region& region, T* work, Visit visit) {
  for (uint32_t j = 0; j < region.Hf; ++j)
    for (uint32_t i = 0; i < region.Wf; ++i)
      visit(region.siteOf(i, j), work + (static_cast<ptrdiff_t>(j) + 2) * region.S +
                                     3 * (static_cast<ptrdiff_t>(i) + 2));
}

// Neighbours of a pixel, dx columns to the right and dy rows down.
template <class T>
struct NeighboursXY {
  const T* p;
  ptrdiff_t S;
  int C(int channel, int dx, int dy) const { return p[dy * S + 3 * dx + channel]; }
  int B(int dx, int dy) const { return C(kBlue, dx, dy); }
  int G(int dx, int dy) const { return C(kGreen, dx, dy); }
  int R(int dx, int dy) const { return C(kRed, dx, dy); }
};

// The same, r rows down and c columns to the right.
template <class T>
struct NeighboursRC {
  const T* p;
  ptrdiff_t S;
  int C(int channel, int r, int c) const { return p[r * S + 3 * c + channel]; }
  int B(int r, int c) const { return C(kBlue, r, c); }
  int G(int r, int c) const { return C(kGreen, r, c); }
  int R(int r, int c) const { return C(kRed, r, c); }
};

// The limit of a computed sample. At 16 bits it is that of ten significant bits, whatever the frame
// has; sensed samples are not limited.
template <class T>
constexpr int kLimit = sizeof(T) == 1 ? 255 : 1023;

template <class T>
T* workBufferOf(uint32_t nIndex) {
  return reinterpret_cast<T*>(g_pwBGRBuff[nIndex]);
}

// Defines both overloads of a function that scatters the mosaic, runs fill(work, region) and
// converts.
#define REFERENCE_GUARDED(name, fill)                                                        \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,         \
            uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,            \
            uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {                       \
    uint8_t* const work = workBufferOf<uint8_t>(nIndex);                                     \
    PrepareBGRBuffer(nImgWidth, nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, \
                     work);                                                                  \
    fill(work, Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight));               \
    ConvertToOutputFormat8(work, nRoiWidth, nRoiHeight, pDst, nFormat, nBinning, 1);         \
  }                                                                                          \
  void name(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,         \
            uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,             \
            uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc, uint8_t* pDst,    \
            uint32_t nDstBits, uint32_t nSrcBits) {                                          \
    uint16_t* const work = workBufferOf<uint16_t>(nIndex);                                   \
    PrepareBGRBuffer(nImgWidth, nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight, pSrc, \
                     work);                                                                  \
    fill(work, Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight));               \
    ConvertToOutputFormat16(work, nRoiWidth, nRoiHeight, nSrcBits, pDst, nFormat, nLutMode,  \
                            g_pwUserLUT[nIndex], nBinning, nDstBits, 1);                     \
  }

}  // namespace reference
