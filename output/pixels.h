// Kernels of pixel formats: they turn finished pixels, three interleaved samples each, into pixels
// of another format. They are compiled once for each instruction-set level.
//
// A kernel reads and writes n pixels, and not a byte more, at any alignment. Sources and results
// don't overlap. All but the alpha kernels, planes8 and planes16 take the order blue, green,
// red.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

using PixelFunction = void (*)(const void* pixels, size_t n, void* result);
using PlanesFunction = void (*)(const void* pixels, size_t n, void* const planes[3]);

// Of the pairs of pixels in a row: 32 times the sum of their blue samples less that of their green
// ones, and of their red samples likewise.
struct PairSums {
  int16_t *blue, *red;
};
using PairsFunction = void (*)(const void* pixels, size_t pairs, void* luma, const PairSums& sums);
using ChromaPairsFunction = void (*)(const PairSums& upper, const PairSums& lower, size_t blocks,
                                     void* cbcr);
using ChromaPlanesFunction = void (*)(const PairSums& upper, const PairSums& lower, size_t blocks,
                                      void* cb, void* cr);

struct PixelFormatKernels {
  // Bytes, with an alpha of 255 after or before them.
  PixelFunction alphaLast8, alphaFirst8;

  // (114 * blue + 587 * green + 299 * red + 500) / 1000, truncated: Rec. 601 luma, rounded.
  PixelFunction luma8, luma16;

  // A row for each of the three samples.
  PlanesFunction planes8, planes16;

  // BT.709 luma and chroma of bytes, in limited range: luma 16 to 235, chroma 16 to 240. With >>
  // rounding down:
  //
  //   luma  Y = 17 * (15 * blue + 148 * green + 44 * red + 3966) >> 12
  //
  // Chroma belongs to blocks of 2x2 pixels. Let b and r be the PairSums of a block's rows, added:
  // 128 times the mean differences of blue and of red to green. Let product(v, w) = (v * w + 16384)
  // >> 15:
  //
  //   Cb = (16448 + product(b, 14392) + product(r, -3298)) >> 7
  //   Cr = (16448 + product(r, 14392) + product(b, -1320)) >> 7
  //
  // Black is (16, 128, 128), white (235, 128, 128), and every gray has a chroma of 128. No luma is
  // further than 0.54 from its value in exact arithmetic, no chroma further than 0.52.
  PairsFunction pairsTo709;
  ChromaPairsFunction chromaPairs709;    // Cb, Cr, Cb, Cr ... (NV12)
  ChromaPlanesFunction chromaPlanes709;  // a row of Cb, a row of Cr (I420)

  // Rows of Y, Cb and Cr (I444). The chroma of a pixel is that of a block of four such pixels.
  PlanesFunction planes709;
};

// The kernels of the current level.
const PixelFormatKernels& pixelFormatKernels();

}  // namespace vistrel::core
