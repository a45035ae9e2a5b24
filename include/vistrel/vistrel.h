/*
 * libVistrel: raw camera frames to images, exact to the sample.
 *
 * Plain C. Each call does all its work on the caller's thread; the library does no
 * input or output and starts no threads.
 *
 * Nothing is validated: the caller must pass sizes, pointers and stream ids that
 * fit together. Programs that take input from elsewhere should use the host layer
 * (vistrel_host.h), which checks every argument.
 *
 * Order of calls: ImgLoadDriver once; ImgInitialize for each stream, and again
 * when its frames get larger; any number of conversions; ImgUnloadDriver. Only
 * one thread at a time may use a stream. Different streams are independent once
 * every ImgInitialize has returned.
 */
#ifndef VISTREL_H
#define VISTREL_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Pixel formats. Rows of a destination have no padding and no stride. */
enum {
  IMG_FMT_MONO8 = 0,    /* one byte; the source is monochrome */
  IMG_FMT_MONO16 = 1,   /* one 16-bit sample; the source is monochrome */
  IMG_FMT_BGR24 = 2,    /* three bytes: blue, green, red */
  IMG_FMT_ARGB32 = 3,   /* four bytes: one left unchanged, then red, green, blue */
  IMG_FMT_ARGB32_4 = 4, /* the same format under a second code */
  IMG_FMT_GRAY8 = 5,    /* one byte of luminance */
  IMG_FMT_GRAY16 = 6,   /* one 16-bit sample of luminance; 16-bit sources only */
  IMG_FMT_BGR48 = 7     /* 16-bit blue, green, red; 16-bit sources only */
};

/* Demosaic algorithms: the low byte of nAlgorithm. */
enum {
  DM_BILINEAR = 0,           /* the mean of the nearest sites */
  DM_EDGE_EX = 1,            /* colour differences along edges; takes a threshold */
  DM_NEAR_NEIGHBOR = 2,      /* nearest neighbours; green along edges */
  DM_GRADIENT_LAROCHE = 3,   /* Laroche and Prescott: colours as differences to green */
  DM_GRADIENT_HAMILTON = 4,  /* Hamilton and Adams: colours corrected by second differences */
  DM_VARIABLE_GRADIENTS = 5, /* Chang, Cheung and Pang: mean of the smoothest directions */
  DM_HUE_COK = 6,            /* Cok: colours as ratios to green */
  DM_HUE_KIMMEL = 7,         /* Kimmel: ratios to green, weighted by gradients, corrected twice */
  DM_PIXEL_GROUPING = 8      /* Lin: green from the smoothest of four directions, hue transit */
};

/* Bayer phase: the 2x2 block of colours at sensor position (0, 0), row by row. */
enum { BAYER_GRBG = 0, BAYER_BGGR = 1, BAYER_RGGB = 2, BAYER_GBRG = 3 };

/*
 * Clears the table of 128 streams and chooses the processor level. Call it once:
 * it forgets any open stream without freeing its memory. Returns 0, or 20 on a
 * processor of another vendor, or 36 on one below the base level; whatever it
 * returns, the library is ready for use.
 */
int32_t ImgLoadDriver(void);

/* Frees the memory of every stream. Known ids keep their slots. */
void ImgUnloadDriver(void);

/*
 * Opens stream nID for frames of up to nImgWidth x nImgHeight pixels, or replaces
 * its work buffer if it is open. Returns 1 on success, 0 if 128 other ids are in
 * use or if allocation fails.
 */
uint32_t ImgInitialize(uint32_t nID, uint32_t nImgWidth, uint32_t nImgHeight);

/*
 * Sets the stream's look-up table, which nLutMode 10 applies. pTable has nEntries
 * values of 0..255, indexed by the full range of the source: 1024 entries for
 * 10-bit sources, 4096 for 12-bit sources. Entries beyond 4096 are ignored; a
 * shorter table leaves the rest of an earlier, longer one in place. Returns 1 on
 * success, 0 if allocation fails.
 */
uint32_t ImgLoadLookupTable(uint32_t nID, const uint16_t* pTable, uint32_t nEntries);

/*
 * Converts one frame of 8-bit samples.
 *
 *   nID            stream, opened by ImgInitialize for a frame at least as large
 *   nFormat        IMG_FMT_..., but none of the 16-bit formats
 *   nAlgorithm     DM_... in bits 0..7; a threshold of 0..255 in bits 8..15
 *   nBayer         BAYER_..., at sensor position (0, 0)
 *   nBinning       0..3: sums blocks of 1x1 to 4x4 pixels and divides the sums by 1 to 4
 *   nImgWidth      width of the source and distance between its rows, in samples
 *   nImgHeight     height of the source
 *   nRoiX, nRoiY   origin of the region, in binned pixels
 *   nRoiWidth, nRoiHeight   size of the result, in pixels
 *   pSrc           the frame's first sample
 *   pDst           nRoiWidth * nRoiHeight pixels of nFormat
 *   nSrcBits       ignored: samples have 8 bits
 *   bSkipDemosaic  nonzero: pSrc is an image of three samples per pixel (blue,
 *                  green, red) with (nBinning + 1) * nRoiWidth pixels per row
 *
 * For colour formats nRoiY changes only the phase, not the first source row: to
 * skip rows, advance pSrc.
 * Returns 1 on success. Returns 0 for an unknown algorithm, and for IMG_FMT_MONO16
 * and IMG_FMT_GRAY16. Returns 1 and leaves pDst unchanged for other formats that it
 * cannot write.
 */
uint32_t ImgConvert8(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                     uint32_t nBinning, uint32_t nImgWidth, uint32_t nImgHeight, uint32_t nRoiX,
                     uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                     void* pDst, uint32_t nSrcBits, uint32_t bSkipDemosaic);

/*
 * Converts one frame of 16-bit samples, to any format. Like ImgConvert8, and:
 *
 *   nDstBits  bits of an output pixel, all channels together: three times the
 *             bits of a channel for formats with three or four channels, the bits
 *             of the sample for gray formats and IMG_FMT_MONO16; IMG_FMT_MONO8
 *             ignores it
 *   nLutMode  for 8-bit results: 0, 1 and 2 keep the eight bits that start at the
 *             top bit, one bit lower and two bits lower, clamped; 3..7 apply a
 *             tone curve; 10 applies the stream's table. Tables need nSrcBits of
 *             at least 10
 *   nSrcBits  significant bits of a sample; they are its low bits
 */
uint32_t ImgConvert16(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                      uint32_t nBinning, uint32_t nDstBits, uint32_t nLutMode, uint32_t nImgWidth,
                      uint32_t nImgHeight, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                      uint32_t nRoiHeight, const uint16_t* pSrc, void* pDst, uint32_t nSrcBits,
                      uint32_t bSkipDemosaic);

/* A 3x3 filter. */
typedef struct _FLT_3X3 {
  int32_t nDivisor;     /* divides the weighted sum; not 0 */
  int32_t anWeights[9]; /* row by row, upper left first */
} _FLT_3X3;

/*
 * Filters a finished image in place.
 *
 *   nID         stream, opened by ImgInitialize for an image at least as large;
 *               its work buffer holds a copy of the image afterwards
 *   pFilter     weights and divisor. For single-channel formats two pointer values
 *               select a fixed filter: 0 the mean of 2x2 samples, 1 the mean of
 *               five samples of one colour of a mosaic
 *   nFormat     IMG_FMT_MONO8 and GRAY8: 8-bit samples. IMG_FMT_MONO16 and GRAY16:
 *               16-bit samples, results at most 1023. IMG_FMT_BGR24: three bytes
 *               per pixel. All others, including IMG_FMT_BGR48: four bytes per pixel
 *   nImgWidth, nImgHeight   size of the image, in pixels
 *   pImage      rows of pixels without padding
 *
 * The weighted sum is divided, truncated toward zero and clamped to 0..255 or to
 * 0..1023. A weighted filter leaves the outermost pixels on every side unchanged,
 * and the whole image if it is less than 3 pixels wide or high. The mean of 2x2
 * leaves the last row and the last column unchanged (for 16-bit samples the last
 * three columns); the mean of five leaves two rows at the top, two at the bottom
 * and the last four columns.
 * For IMG_FMT_BGR24 the weights left and right of the centre apply to the bytes
 * next to the centre byte. With four bytes per pixel the lower left weight applies
 * to the byte just before the lower tap's.
 * Returns 1.
 */
uint32_t ImgFilter(uint32_t nID, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                   uint32_t nImgHeight, void* pImage);

#ifdef __cplusplus
}
#endif

#endif
