// The primitives' work on a single rectangle, and the strips of a border for both depths, by name.
// Steps are in samples for nearest neighbours, in bytes for the others. If an allocation fails,
// nothing is written.
#pragma once

#include <algorithm>

#include "cfa/ahd/ahd.h"
#include "cfa/border.h"
#include "cfa/near/near.h"
#include "cfa/variants.h"

namespace vistrel::core {

// The pixels of a rectangle within two pixels of the frame's edge.
// srcRoi must be clipped to the frame. pDst points to its first pixel; dstStep is in samples.
template <class T>
void ownBayerBorder(const CfaFrame<T>& frame, CfaRect srcRoi, T* pDst, ptrdiff_t dstStep) {
  const int W = frame.size.width, H = frame.size.height;
  const int x = srcRoi.x, y = srcRoi.y, xEnd = x + srcRoi.width, yEnd = y + srcRoi.height;
  const auto at = [&](int column, int row) {
    return pDst + (row - y) * dstStep + 3 * (column - x);
  };
  const auto hasRow = [&](int row) { return y <= row && row < yEnd; };
  const auto hasColumn = [&](int column) { return x <= column && column < xEnd; };

  if (y == 0) ownBayerBrdHrz2U<T>(frame.part(0, 0, {W, 2}), srcRoi, at(x, 0));
  if (H >= 3 && hasRow(1)) ownBayerBrdHrz3<T>(frame.part(0, 0, {W, 3}), srcRoi, at(x, 1));

  const int top = std::max(y, 2), bottom = std::min(yEnd, H - 2);
  if (top < bottom) {
    const CfaRect rows{x, top, srcRoi.width, bottom - top};
    if (x == 0) ownBayerBrdVrt2L<T>(frame.part(0, 0, {2, H}), rows, at(0, top), dstStep);
    if (W >= 3 && hasColumn(1))
      ownBayerBrdVrt3<T>(frame.part(0, 0, {3, H}), rows, at(1, top), dstStep);
    if (W >= 3 && hasColumn(W - 2))
      ownBayerBrdVrt3<T>(frame.part(W - 3, 0, {3, H}), rows, at(W - 2, top), dstStep);
    if (xEnd == W) ownBayerBrdVrt2R<T>(frame.part(W - 2, 0, {2, H}), rows, at(W - 1, top), dstStep);
  }

  if (H >= 3 && hasRow(H - 2))
    ownBayerBrdHrz3<T>(frame.part(0, H - 3, {W, 3}), srcRoi, at(x, H - 2));
  if (yEnd == H) ownBayerBrdHrz2D<T>(frame.part(0, H - 2, {W, 2}), srcRoi, at(x, H - 1));
}

// Nearest neighbours in a rectangle with a margin of two samples. pSrc points to its first sample.
// grid: the colours of its upper left pixels.
template <class T, int grid>
void owncnBayerRect(const T* pSrc, int srcStep, int width, int height, T* pDst, int dstStep) {
  PlainRows<T> source(pSrc - 2 * ptrdiff_t{srcStep} - 2, srcStep, height + 4);
  PlainImage<T> image(pDst, dstStep);
  makeNear<T>({source, {width + 4, height + 4}, Mosaic::ofGrid(grid)}, {2, 2, width, height}, image,
              currentLevel());
}

// A rectangle by homogeneity; its running choice restarts in every row.
template <class T>
void ahdRectangle(const CfaFrame<T>& frame, CfaRect rect, T* pDst, ptrdiff_t dstStep, Level level) {
  PlainRows<T> source(frame.samples, frame.step, frame.size.height);
  PlainImage<T> image(pDst, dstStep);
  withArena([&](Arena& arena) {
    AhdStrip<T> strip({source, frame.size, frame.mosaic}, rect.x, rect.width, {.level = level},
                      arena);
    const auto restart = [&](int, const AhdChoice<T>& choice) { choice.restartAt(rect.x); };
    if (!arena.counts()) strip.sweep(image, rect, rowsOf(rect), restart).finish();
  });
}

// A frame with the colours of `phase` at a rectangle's upper left pixels: 0 RG GB, 1 GB RG, 2 BG
// GR, 3 GR BG. maxX, maxY: the frame's last column and row.
template <class T>
CfaFrame<T> frameByPhase(const T* pSrc, int srcStep, CfaRect rect, int phase, int maxX, int maxY) {
  constexpr int kGrids[4] = {CFA_GRID_RGGB, CFA_GRID_GBRG, CFA_GRID_BGGR, CFA_GRID_GRBG};
  const Mosaic mosaic = Mosaic::ofGrid(kGrids[phase]).from(-rect.x, -rect.y);
  return {pSrc, srcStep / int{sizeof(T)}, {maxX + 1, maxY + 1}, mosaic};
}

// pSrc points to the frame's first sample, pDst to the rectangle's first pixel. The scratch memory
// is not touched. Phases other than 0 .. 3 do nothing.
template <class T, uint32_t variant>
void localAHD(const T* pSrc, int srcStep, CfaRect rect, T* pDst, int dstStep, T* /*pTmp*/,
              int /*tmpStep*/, int phase, int maxX, int maxY) {
  if (phase < 0 || phase > 3) return;
  ahdRectangle(frameByPhase(pSrc, srcStep, rect, phase, maxX, maxY), rect, pDst,
               dstStep / int{sizeof(T)}, levelOfIndex(variant));
}

template <class T, int phase>
void localAHDOfPhase(const T* pSrc, int srcStep, CfaRect rect, T* pDst, int dstStep, T* /*pTmp*/,
                     int /*tmpStep*/, int maxX, int maxY) {
  ahdRectangle(frameByPhase(pSrc, srcStep, rect, phase, maxX, maxY), rect, pDst,
               dstStep / int{sizeof(T)}, currentLevel());
}

// For phase 0, with a margin of five samples, so that nothing is mirrored.
template <class T>
void localIntAHD(const T* pSrc, int srcStep, CfaRect rect, T* pDst, int dstStep, T* pTmp,
                 int tmpStep) {
  constexpr int kMargin = kAhdReach;
  localAHDOfPhase<T, 0>(pSrc, srcStep, rect, pDst, dstStep, pTmp, tmpStep,
                        rect.x + rect.width + kMargin - 1, rect.y + rect.height + kMargin - 1);
}

#define VISTREL_RECTANGLES(T, depth)                                             \
  constexpr auto owncnBayerRectBGGR_##depth = &owncnBayerRect<T, CFA_GRID_BGGR>; \
  constexpr auto owncnBayerRectRGGB_##depth = &owncnBayerRect<T, CFA_GRID_RGGB>; \
  constexpr auto owncnBayerRectGBRG_##depth = &owncnBayerRect<T, CFA_GRID_GBRG>; \
  constexpr auto owncnBayerRectGRBG_##depth = &owncnBayerRect<T, CFA_GRID_GRBG>; \
  VISTREL_VARIANTS(localAHD_##depth, localAHD, T);                               \
  constexpr auto localAHD_RGGB_##depth = &localAHDOfPhase<T, 0>;                 \
  constexpr auto localAHD_GBRG_##depth = &localAHDOfPhase<T, 1>;                 \
  constexpr auto localAHD_BGGR_##depth = &localAHDOfPhase<T, 2>;                 \
  constexpr auto localAHD_GRBG_##depth = &localAHDOfPhase<T, 3>;                 \
  constexpr auto localIntAHD_##depth = &localIntAHD<T>

VISTREL_VARIANTS(ownAHD_8u_w7, ownAHD, uint8_t);
VISTREL_VARIANTS(ownAHD_16u_w7, ownAHD, uint16_t);

VISTREL_RECTANGLES(uint8_t, 8u);
VISTREL_RECTANGLES(uint16_t, 16u);

#undef VISTREL_RECTANGLES

#define VISTREL_BOTH_DEPTHS(name)           \
  constexpr auto name##_8u = name<uint8_t>; \
  constexpr auto name##_16u = name<uint16_t>

constexpr auto ownBayerBorder_8u = &ownBayerBorder<uint8_t>;
constexpr auto ownBayerBorder_16u = &ownBayerBorder<uint16_t>;
VISTREL_BOTH_DEPTHS(ownBayerBrdHrz3);
VISTREL_BOTH_DEPTHS(ownBayerBrdHrz2D);
VISTREL_BOTH_DEPTHS(ownBayerBrdHrz2U);
VISTREL_BOTH_DEPTHS(ownBayerBrdVrt3);
VISTREL_BOTH_DEPTHS(ownBayerBrdVrt2R);
VISTREL_BOTH_DEPTHS(ownBayerBrdVrt2L);

#undef VISTREL_BOTH_DEPTHS

}  // namespace vistrel::core
