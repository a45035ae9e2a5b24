/*
 * The filter-array primitives of libVistrel: a mosaic of one sample a pixel to an image of three,
 * in the order red, green, blue.
 *
 * Plain C, and without state: any number of calls may run at once on separate buffers. Steps are
 * distances of rows in bytes. A frame is its upper left sample, its size and its grid.
 */
#ifndef VISTREL_CFA_H
#define VISTREL_CFA_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct CfaRect {
  int32_t x, y, width, height;
} CfaRect;

typedef struct CfaSize {
  int32_t width, height;
} CfaSize;

/* The colours of the frame's upper left 2x2 pixels, row by row. */
enum { CFA_GRID_BGGR = 0, CFA_GRID_RGGB = 1, CFA_GRID_GBRG = 2, CFA_GRID_GRBG = 3 };

/* Results. */
enum { CFA_OK = 0, CFA_BAD_GRID = -5, CFA_BAD_SIZE = -6, CFA_NULL_POINTER = -8 };

/*
 * Nearest neighbours: green at red and blue sites along the smaller of two gradients, all else by
 * rounded means; non-directional, with mirrored coordinates, within two pixels of the frame's edge.
 *
 *   pSrc, srcStep   the frame's first sample
 *   srcRoi          the rectangle to convert; its far sides are clipped to the frame
 *   srcSize         the frame's size, at least 2 x 2
 *   pDst, dstStep   where the rectangle's first pixel goes
 *   grid            CFA_GRID_...
 *   interpolation   not read
 *
 * Returns CFA_OK, also where nothing is left of the rectangle; on an error nothing is written.
 */
int32_t ippiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep,
                              uint8_t* pDst, int32_t dstStep, int32_t grid, int32_t interpolation);
int32_t ippiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                               int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                               int32_t interpolation);

/*
 * Adaptive homogeneity-directed demosaicing (Hirakawa and Parks, 2005): every pixel from the better
 * of two reconstructions, along rows and along columns.
 *
 *   srcRoi    the region; a negative origin moves to 0, then the far sides are clipped
 *   srcSize   at least 5 x 5
 *   pTmp      scratch of 30 lines, tmpStep bytes apart; may be null, it is not touched
 *
 * The others and the result as above. Without memory for a few rows nothing is written.
 */
int32_t ippiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                 int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t grid,
                                 uint8_t* pTmp, int32_t tmpStep);
int32_t ippiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                  int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                                  uint16_t* pTmp, int32_t tmpStep);

#ifdef __cplusplus
}
#endif

#endif
