/*
 * libVistrel: raw camera frames to images, exact to the sample.
 *
 * Plain C. One call does all its work on the caller's thread and returns; the
 * library prints nothing, opens nothing and starts no thread.
 *
 * Nothing is validated: a size, a pointer or a stream id that does not fit is
 * the caller's fault. Programs that take input from elsewhere should use the
 * host layer (host/vistrel_host.h), which checks every argument.
 *
 * Order of calls: ImgLoadDriver once; ImgInitialize for each stream, and again
 * when its largest frame grows; any number of conversions; ImgUnloadDriver.
 * One stream serves one thread at a time. Different streams are independent
 * once every ImgInitialize is over.
 */
#ifndef VISTREL_H
#define VISTREL_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Pixel formats. Rows of a destination are packed: no padding, no stride. */
enum {
  IMG_FMT_MONO8 = 0,    /* 1 byte; the source is monochrome */
  IMG_FMT_MONO16 = 1,   /* 1 word of 16 bits; the source is monochrome */
  IMG_FMT_BGR24 = 2,    /* bytes blue, green, red */
  IMG_FMT_ARGB32 = 3,   /* bytes: one left as it was, then red, green, blue */
  IMG_FMT_ARGB32_4 = 4, /* the same under its second code */
  IMG_FMT_GRAY8 = 5,    /* 1 byte of luminance */
  IMG_FMT_GRAY16 = 6,   /* 1 word of luminance; 16-bit sources only */
  IMG_FMT_BGR48 = 7     /* words blue, green, red; 16-bit sources only */
};

/* Demosaic algorithms: the low byte of nAlgorithm. */
enum {
  DM_BILINEAR = 0,           /* the plain mean of the nearest sites */
  DM_EDGE_EX = 1,            /* colour differences along edges; the next byte is a threshold */
  DM_NEAR_NEIGHBOR = 2,      /* nearest neighbours, green along an edge */
  DM_GRADIENT_LAROCHE = 3,   /* Laroche and Prescott: colours as differences to green */
  DM_GRADIENT_HAMILTON = 4,  /* Hamilton and Adams: colours corrected by second differences */
  DM_VARIABLE_GRADIENTS = 5, /* Chang, Cheung and Pang: the mean of the quiet directions of eight */
  DM_HUE_COK = 6,            /* Cok: colours as ratios to green */
  DM_HUE_KIMMEL = 7,         /* Kimmel: ratios to green, weighted by gradients, corrected twice */
  DM_PIXEL_GROUPING = 8      /* Lin: green of the quietest of four directions, then hue transit */
};

/* Bayer phase: the mosaic's 2x2 block at sensor position (0, 0), row by row. */
enum { BAYER_GRBG = 0, BAYER_BGGR = 1, BAYER_RGGB = 2, BAYER_GBRG = 3 };

/*
 * Empties the table of 128 streams and chooses the processor level. Call it
 * once: streams that were open before are forgotten, their memory with them.
 * Returns a status: 0, or 20 on a processor of another vendor, or 36 on one
 * below the base level; every status leaves the library ready for use.
 */
int32_t ImgLoadDriver(void);

/* Frees the memory of every stream. An id that was known keeps its slot. */
void ImgUnloadDriver(void);

/*
 * Opens the stream nID, or gives it a new work buffer, for frames of up to
 * nImgWidth x nImgHeight pixels. Returns 1, or 0 when 128 other ids are taken
 * or the memory is not to be had.
 */
uint32_t ImgInitialize(uint32_t nID, uint32_t nImgWidth, uint32_t nImgHeight);

/*
 * Gives the stream a look-up table for nLutMode 10. pTable has nEntries values
 * of 0..255, indexed in the full range of the source depth: 1024 entries serve
 * sources of 10 bits, 4096 those of 12. Entries past 4096 are ignored; a shorter
 * table leaves the tail of a longer one. Returns 1, or 0 without memory.
 */
uint32_t ImgLoadLookupTable(uint32_t nID, const uint16_t* pTable, uint32_t nEntries);

/*
 * Converts one frame of bytes.
 *
 *   nID            stream, opened by ImgInitialize for a frame at least as large
 *   nFormat        IMG_FMT_..., except the 16-bit formats
 *   nAlgorithm     DM_... in bits 0..7; a threshold of 0..255 in bits 8..15
 *   nBayer         BAYER_..., of the sensor position (0, 0)
 *   nBinning       0..3: sums blocks of 1x1 .. 4x4 pixels and divides by 1 .. 4
 *   nImgWidth      width of the source and distance of its rows, in samples
 *   nImgHeight     height of the source
 *   nRoiX, nRoiY   origin of the region, in binned pixels
 *   nRoiWidth, nRoiHeight   size of the result, in pixels
 *   pSrc           the frame's first sample
 *   pDst           nRoiWidth * nRoiHeight pixels of nFormat
 *   nSrcBits       ignored: a byte counts as 8 bits
 *   bSkipDemosaic  nonzero: pSrc is an image of three samples a pixel, blue,
 *                  green, red, (nBinning + 1) * nRoiWidth pixels a row
 *
 * Colour formats do not apply nRoiY to the rows of the source, only to the
 * phase: to cut rows off, advance pSrc.
 * Returns 1, or 0 for a format or an algorithm that there is not.
 */
uint32_t ImgConvert8(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                     uint32_t nBinning, uint32_t nImgWidth, uint32_t nImgHeight, uint32_t nRoiX,
                     uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                     void* pDst, uint32_t nSrcBits, uint32_t bSkipDemosaic);

/*
 * Converts one frame of 16-bit words. As ImgConvert8, and:
 *
 *   nDstBits  bits of an output pixel, all channels together: three times the
 *             bits of a channel for the formats of three and four channels, the
 *             bits of the sample for gray and IMG_FMT_MONO16; IMG_FMT_MONO8
 *             ignores it
 *   nLutMode  results of 8 bits: 0, 1, 2 keep the eight bits that begin at the
 *             top bit, one and two places lower, clamped; 3..7 apply a tone
 *             curve; 10 the stream's own table. Tables need nSrcBits of 10 up
 *   nSrcBits  significant bits of a sample, in the low bits of its word
 */
uint32_t ImgConvert16(uint32_t nID, uint32_t nFormat, uint32_t nAlgorithm, uint32_t nBayer,
                      uint32_t nBinning, uint32_t nDstBits, uint32_t nLutMode, uint32_t nImgWidth,
                      uint32_t nImgHeight, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                      uint32_t nRoiHeight, const uint16_t* pSrc, void* pDst, uint32_t nSrcBits,
                      uint32_t bSkipDemosaic);

/* A kernel filter. */
typedef struct _FLT_3X3 {
  int32_t nDivisor;     /* of the weighted sum; not 0 */
  int32_t anWeights[9]; /* row by row: upper left first, the centre fifth */
} _FLT_3X3;

/*
 * Filters a finished image in place.
 *
 *   nID         stream, opened by ImgInitialize for an image at least as large;
 *               its work buffer holds a copy of the image afterwards
 *   pFilter     weights and divisor. Gray formats also take two fixed filters
 *               in its place: the pointer value 0 for a mean of 2x2 samples, 1
 *               for a mean of five samples of one colour of a mosaic
 *   nFormat     IMG_FMT_MONO8 and GRAY8: bytes. IMG_FMT_MONO16 and GRAY16: words,
 *               whose results stop at 1023. IMG_FMT_BGR24: three bytes a pixel.
 *               All others, IMG_FMT_BGR48 among them: four bytes a pixel
 *   nImgWidth, nImgHeight   size of the image, in pixels
 *   pImage      rows of pixels without padding
 *
 * A sum is divided, truncated toward zero and clamped to 0..255 or 0..1023.
 * With weights, the outer pixels on every side stay as they are; so does the
 * whole image where it is less than 3 pixels wide or high. The mean of 2x2 leaves
 * the last row and the last column (of words the last three columns); the mean
 * of five leaves two rows on either side and the last four columns.
 * In IMG_FMT_BGR24 the weights left and right of the centre apply to the bytes
 * beside it; with four bytes a pixel, so does the lower left weight to the byte
 * beside the lower one.
 * Returns 1.
 */
uint32_t ImgFilter(uint32_t nID, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                   uint32_t nImgHeight, void* pImage);

#ifdef __cplusplus
}
#endif

#endif
