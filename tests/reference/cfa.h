// The primitives that convert a mosaic to three samples per pixel: red, green, blue.
#pragma once

#include <cstdint>

namespace reference {

struct CfaRect {
  int32_t x, y, width, height;
};

struct CfaSize {
  int32_t width, height;
};

// The frame's top left 2 by 2 samples, row by row.
enum { CFA_GRID_BGGR, CFA_GRID_RGGB, CFA_GRID_GBRG, CFA_GRID_GRBG };

// Steps are in bytes. They return 0, or -8 for a null pointer, -6 for a small frame, -5 for an
// invalid grid.
int32_t ippiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int srcStep,
                              uint8_t* pDst, int dstStep, int grid, int interpolation);
int32_t ippiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int srcStep,
                               uint16_t* pDst, int dstStep, int grid, int interpolation);

// The scratch memory is not touched here.
int32_t ippiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int srcStep,
                                 uint8_t* pDst, int dstStep, int grid, uint8_t* pTmp, int tmpStep);
int32_t ippiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                  int srcStep, uint16_t* pDst, int dstStep, int grid,
                                  uint16_t* pTmp, int tmpStep);

// A rectangle with a margin of two samples; steps are in samples. The letters are the colours of
// the rectangle's own top left 2 by 2 samples.
#define REFERENCE_RECT(name, T) \
  void name(const T* pSrc, int srcStep, int width, int height, T* pDst, int dstStep)
REFERENCE_RECT(owncnBayerRectBGGR_8u, uint8_t);
REFERENCE_RECT(owncnBayerRectRGGB_8u, uint8_t);
REFERENCE_RECT(owncnBayerRectGBRG_8u, uint8_t);
REFERENCE_RECT(owncnBayerRectGRBG_8u, uint8_t);
REFERENCE_RECT(owncnBayerRectBGGR_16u, uint16_t);
REFERENCE_RECT(owncnBayerRectRGGB_16u, uint16_t);
REFERENCE_RECT(owncnBayerRectGBRG_16u, uint16_t);
REFERENCE_RECT(owncnBayerRectGRBG_16u, uint16_t);
#undef REFERENCE_RECT

// The part of a rectangle within two samples of the frame's edge; steps are in samples.
void ownBayerBorder_8u(const uint8_t* pSrc, CfaSize srcSize, int srcStep, CfaRect srcRoi,
                       uint8_t* pDst, int dstStep, int grid);
void ownBayerBorder_16u(const uint16_t* pSrc, CfaSize srcSize, int srcStep, CfaRect srcRoi,
                        uint16_t* pDst, int dstStep, int grid);

// The grid for a phase, with red and blue exchanged.
unsigned VST2IPPBayerOffset(unsigned nBayer);

}  // namespace reference
