// The row kernels of adaptive homogeneity-directed demosaicing, compiled for each level.
#pragma once

#include <type_traits>

#include "common/depth.h"
#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// Green at a row's red or blue sites, in one image.
template <class T>
struct AhdGreen {
  T* green;
  Widened<T>* difference;  // the sensed sample minus green
};

// Luma and chroma of a half row.
template <class T>
struct LumaChroma {
  Widened<T>*y, *u, *v;
};

// The kernels read the weights from memory: g++ turns products with constants into shifts and
// additions, which take twice as long.
template <class T>
struct LumaChromaWeights {
  std::make_unsigned_t<Widened<T>> w220 = 220, w112 = 112, w66 = 66, w38 = 38, w25 = 25, w18 = 18;
};

// Three rows of two half rows each.
template <class T>
struct LumaChromaWindow {
  LumaChroma<T> row[3][2];
};

// The two images: green along rows, and along columns.
enum AhdImage : unsigned { kAlongRow, kAlongColumn, kAhdImages };

// The input for the colours of a row of one image.
template <class T>
struct AhdSensed {
  const T* own;                      // the row's red or blue sites
  const T* green[2];                 // by column parity
  const Widened<T>* differences[3];  // of the row above, this row, the row below
  const LumaChromaWeights<T>* weights;
};

// The results: at green sites the colour of this row and the colour of the rows above and below; at
// the other sites the colour that they do not sense; luma and chroma by column parity.
template <class T>
struct AhdColours {
  T *along, *across, *opposite;
  LumaChroma<T> lumaChroma[2];
};

// A row of one of the two images, by column parity. own: the colour that the row senses besides
// green.
template <class T>
struct ImageHalves {
  const T *own[2], *green[2], *opposite[2];
};

// A row of both images, and the choice between them for each pixel. shift: scales results down.
template <class T>
struct ChosenRows {
  ImageHalves<T> h, v;
  const T* choice[2];
  int shift;
};

// The kernels of a level. Pairs are indexed by the column parity of their sites; `colours` is
// indexed by the column parity of the green sites, then by whether the row's other sites are red.
template <class T>
struct AhdKernels {
  void (*split)(const T* source, size_t columns, T* even, T* odd);
  void (*scale)(T* half, size_t n, int shift);
  void (*green[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, const AhdGreen<T>& alongRow,
                   const AhdGreen<T>& alongColumn);
  void (*colours[2][2])(const AhdSensed<T>& source, size_t n, const AhdColours<T>& result);
  void (*scores[2])(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n,
                    T* scores);
  void (*sums)(const T* const (&scores)[3][2], size_t n, int8_t* even, int8_t* odd, T* evenColumns,
               T* oddColumns);
  const PixelKernels<T, ChosenRows<T>>* pixels;
};

}  // namespace vistrel::core
