/*
 * The colour filter array primitives of libVistrel. They convert a mosaic of one sample per pixel
 * to an image of three samples per pixel: red, green, blue.
 *
 * Plain C without state: any number of calls may run at once on separate buffers. A step is the
 * distance between two rows in bytes. A frame is given by its first sample, its size and its grid.
 */
#ifndef VISTREL_CFA_H
#define VISTREL_CFA_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A rectangle of a frame, in pixels. */
typedef struct CfaRect {
  int32_t x, y;          /* upper left corner */
  int32_t width, height; /* size */
} CfaRect;

/* The size of a frame. */
typedef struct CfaSize {
  int32_t width, height; /* pixels */
} CfaSize;

/* Grid: the colours of the frame's upper left 2x2 pixels, row by row. */
enum { CFA_GRID_BGGR = 0, CFA_GRID_RGGB = 1, CFA_GRID_GBRG = 2, CFA_GRID_GRBG = 3 };

/* Results. */
enum { CFA_OK = 0, CFA_BAD_GRID = -5, CFA_BAD_SIZE = -6, CFA_NULL_POINTER = -8 };

/*
 * Nearest neighbours: green at red and blue sites is interpolated along the smaller of two
 * gradients, everything else by rounded means. Within two pixels of the frame's edge all samples
 * are interpolated without direction, with mirrored coordinates.
 *
 *   pSrc, srcStep   the frame's first sample, and the distance between its rows
 *   srcRoi          the rectangle to convert; its right and lower sides are clipped to the frame
 *   srcSize         the frame's size, at least 2 x 2
 *   pDst, dstStep   receives the rectangle's first pixel, and the distance between its rows
 *   grid            CFA_GRID_...
 *   interpolation   ignored
 *
 * Returns CFA_OK, even if clipping leaves an empty rectangle. On an error nothing is written.
 */
int32_t ippiCFAToRGB_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int32_t srcStep,
                              uint8_t* pDst, int32_t dstStep, int32_t grid, int32_t interpolation);
int32_t ippiCFAToRGB_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                               int32_t srcStep, uint16_t* pDst, int32_t dstStep, int32_t grid,
                               int32_t interpolation);

/*
 * Adaptive homogeneity-directed demosaicing (Hirakawa and Parks, 2005): takes each pixel from the
 * better of two reconstructions, one along rows and one along columns.
 *
 *   srcRoi    the region; a negative origin moves to 0, then the right and lower sides are clipped
 *   srcSize   at least 5 x 5
 *   pTmp      scratch memory of 30 lines, tmpStep bytes apart; never touched, may be null
 *
 * Other arguments and the result are as above. If memory for a few rows can't be allocated, nothing
 * is written.
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
