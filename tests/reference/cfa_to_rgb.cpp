#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "tests/reference/cfa.h"
#include "tests/reference/cfa_sites.h"

namespace reference {

namespace {

// A pixel being computed: the samples of the mosaic at it and around it.
template <class T>
struct Target {
  char own, beside;
  T* rgb;

  void store(char colour, int v) const {
    rgb[colour == 'R' ? 0 : colour == 'G' ? 1 : 2] = static_cast<T>(v);
  }
  char otherThan(char colour) const { return colour == 'R' ? 'B' : 'R'; }
};

template <class T>
Target<T> targetAt(int grid, int x, int y, T* rgb) {
  return {colourAt(grid, x, y), colourAt(grid, x + 1, y), rgb};
}

// Everything but green at a red or blue site. s(dx, dy): the sample dx columns right, dy rows down.
template <class T, class Samples>
void storeNonDirectional(const Target<T>& target, Samples s) {
  target.store(target.own, s(0, 0));
  if (target.own == 'G') {
    target.store(target.beside, (s(-1, 0) + s(1, 0) + 1) >> 1);
    target.store(target.otherThan(target.beside), (s(0, -1) + s(0, 1) + 1) >> 1);
  } else {
    target.store(target.otherThan(target.own),
                 (s(-1, -1) + s(1, -1) + s(-1, 1) + s(1, 1) + 2) >> 2);
  }
}

template <class Samples>
int meanOfFour(Samples s) {
  return (s(0, -1) + s(-1, 0) + s(1, 0) + s(0, 1) + 2) >> 2;
}

template <class Samples>
int directionalGreen(Samples s) {
  const int dv = std::abs(s(0, -2) - s(0, 2));
  const int dh = std::abs(s(-2, 0) - s(2, 0));
  if (dv < dh) return (s(0, -1) + s(0, 1) + 1) >> 1;
  if (dv > dh) return (s(-1, 0) + s(1, 0) + 1) >> 1;
  return meanOfFour(s);
}

// grid: the colours of the rectangle's own top left 2 by 2 samples.
template <class T>
void interior(const T* pSrc, ptrdiff_t srcStep, int width, int height, T* pDst, ptrdiff_t dstStep,
              int grid) {
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto s = [&](int dx, int dy) -> int { return pSrc[(y + dy) * srcStep + x + dx]; };
      const Target<T> target = targetAt(grid, x, y, pDst + y * dstStep + ptrdiff_t{3} * x);
      storeNonDirectional(target, s);
      if (target.own != 'G') target.store('G', directionalGreen(s));
    }
  }
}

// A neighbour outside the frame is the one on the opposite side of the pixel.
template <class T>
void border(const T* pSrc, CfaSize size, ptrdiff_t srcStep, CfaRect roi, T* pDst, ptrdiff_t dstStep,
            int grid) {
  const int W = size.width, H = size.height;
  const auto within = [](int at, int delta, int length) {
    return at + delta < 0 || at + delta >= length ? at - delta : at + delta;
  };
  for (int y = std::max(roi.y, 0); y < roi.y + roi.height; ++y) {
    for (int x = std::max(roi.x, 0); x < roi.x + roi.width; ++x) {
      if (x >= 2 && x < W - 2 && y >= 2 && y < H - 2) continue;
      const auto s = [&](int dx, int dy) -> int {
        return pSrc[within(y, dy, H) * srcStep + within(x, dx, W)];
      };
      T* const rgb = pDst + (ptrdiff_t{y} - roi.y) * dstStep + 3 * (ptrdiff_t{x} - roi.x);
      const Target<T> target = targetAt(grid, x, y, rgb);
      storeNonDirectional(target, s);
      if (target.own != 'G') target.store('G', meanOfFour(s));
    }
  }
}

// Steps in samples.
template <class T>
int32_t convert(const T* pSrc, CfaRect roi, CfaSize size, ptrdiff_t srcStep, T* pDst,
                ptrdiff_t dstStep, int grid) {
  const int W = size.width, H = size.height;
  if (pSrc == nullptr || pDst == nullptr) return -8;
  if (W < 2 || H < 2) return -6;
  if (grid < 0 || grid > 3) return -5;
  if (roi.x >= W || roi.y >= H || roi.width < 1 || roi.height < 1) return 0;
  if (int64_t{roi.x} + roi.width > W) roi.width = W - roi.x;
  if (int64_t{roi.y} + roi.height > H) roi.height = H - roi.y;
  const int xEnd = roi.x + roi.width, yEnd = roi.y + roi.height;
  const int ix0 = std::max(roi.x, 2), iy0 = std::max(roi.y, 2);
  const int ix1 = xEnd < W - 2 ? xEnd - 1 : W - 3;
  const int iy1 = yEnd < H - 2 ? yEnd - 1 : H - 3;

  border(pSrc, size, srcStep, roi, pDst, dstStep, grid);
  if (ix1 - ix0 + 1 >= 1 && iy1 - iy0 + 1 >= 1) {
    // Exchanging columns takes grid 0 to 2 and 1 to 3, exchanging rows 0 to 3 and 1 to 2.
    const int g = grid ^ ((ix0 & 1) != 0 ? 2 : 0) ^ ((iy0 & 1) != 0 ? 3 : 0);
    interior(pSrc + iy0 * srcStep + ix0, srcStep, ix1 - ix0 + 1, iy1 - iy0 + 1,
             pDst + (ptrdiff_t{iy0} - roi.y) * dstStep + 3 * (ptrdiff_t{ix0} - roi.x), dstStep, g);
  }
  return 0;
}

}  // namespace

int32_t ippiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int srcStep,
                              uint8_t* pDst, int dstStep, int grid, int) {
  return convert(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}

int32_t ippiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int srcStep,
                               uint16_t* pDst, int dstStep, int grid, int) {
  return convert(pSrc, srcRoi, srcSize, srcStep >> 1, pDst, dstStep >> 1, grid);
}

#define RECT(name, T, grid)                                                            \
  void name(const T* pSrc, int srcStep, int width, int height, T* pDst, int dstStep) { \
    interior(pSrc, srcStep, width, height, pDst, dstStep, grid);                       \
  }
RECT(owncnBayerRectBGGR_8u, uint8_t, CFA_GRID_BGGR)
RECT(owncnBayerRectRGGB_8u, uint8_t, CFA_GRID_RGGB)
RECT(owncnBayerRectGBRG_8u, uint8_t, CFA_GRID_GBRG)
RECT(owncnBayerRectGRBG_8u, uint8_t, CFA_GRID_GRBG)
RECT(owncnBayerRectBGGR_16u, uint16_t, CFA_GRID_BGGR)
RECT(owncnBayerRectRGGB_16u, uint16_t, CFA_GRID_RGGB)
RECT(owncnBayerRectGBRG_16u, uint16_t, CFA_GRID_GBRG)
RECT(owncnBayerRectGRBG_16u, uint16_t, CFA_GRID_GRBG)
#undef RECT

void ownBayerBorder_8u(const uint8_t* pSrc, CfaSize srcSize, int srcStep, CfaRect srcRoi,
                       uint8_t* pDst, int dstStep, int grid) {
  border(pSrc, srcSize, srcStep, srcRoi, pDst, dstStep, grid);
}

void ownBayerBorder_16u(const uint16_t* pSrc, CfaSize srcSize, int srcStep, CfaRect srcRoi,
                        uint16_t* pDst, int dstStep, int grid) {
  border(pSrc, srcSize, srcStep, srcRoi, pDst, dstStep, grid);
}

unsigned VST2IPPBayerOffset(unsigned nBayer) {
  switch (nBayer) {
    case 0: return CFA_GRID_GBRG;
    case 1: return CFA_GRID_RGGB;
    case 2: return CFA_GRID_BGGR;
    case 3: return CFA_GRID_GRBG;
    default: return CFA_GRID_GBRG;
  }
}

}  // namespace reference
