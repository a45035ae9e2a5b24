// Adaptive homogeneity-directed demosaicing of a strip of a frame, row by row.
#pragma once

#include <type_traits>

#include "cfa/frame.h"
#include "common/rows/half_rows.h"
#include "common/rows/pixel_row.h"
#include "cpu/level.h"

namespace vistrel::core {

// Holds differences of samples, luma and chroma.
template <class T>
using Signed = std::conditional_t<sizeof(T) == 1, int16_t, int32_t>;

// Of a row's red or blue sites, in one image.
template <class T>
struct AhdGreen {
  T* green;
  Signed<T>* difference;  // of the sensed colour to it
};

// Luma and chroma of a half row.
template <class T>
struct LumaChroma {
  Signed<T>*y, *u, *v;
};

// The kernels read these from memory: of constants g++ makes shifts and additions, which take
// twice as long as products.
template <class T>
struct LumaChromaWeights {
  std::make_unsigned_t<Signed<T>> w220 = 220, w112 = 112, w66 = 66, w38 = 38, w25 = 25, w18 = 18;
};

// Three rows by two halves.
template <class T>
using LumaChromaWindow = LumaChroma<T>[3][2];

// What the colours of a row of one image are made of.
template <class T>
struct AhdSensed {
  const T* own;                     // its red or blue sites
  const T* green[2];                // by column parity
  const Signed<T>* differences[3];  // of the row above, this one, the row below
  const LumaChromaWeights<T>* weights;
};

// What they come to: at green sites the colour of this row and the one of the rows above and
// below, at the other sites the colour that they do not sense; luma and chroma by column parity.
template <class T>
struct AhdColours {
  T *along, *across, *opposite;
  LumaChroma<T> lumaChroma[2];
};

// A row of one of the two images, by column parity. own: the colour that the row senses beside
// green.
template <class T>
struct ImageHalves {
  const T *own[2], *green[2], *opposite[2];
};

// A row of both images, and which of them each pixel comes from. shift: on the way out.
template <class T>
struct ChosenRows {
  ImageHalves<T> h, v;
  const T* choice[2];
  int shift;
};

// What each level compiles. Pairs are by the column parity that they work at; colours by that of
// the green sites, and by whether the row's other sites are red.
template <class T>
struct AhdKernels {
  T (*split)(const T* source, size_t pairs, T* even, T* odd);
  void (*scale)(T* half, size_t n, int shift);
  void (*green[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, const AhdGreen<T>& alongRow,
                   const AhdGreen<T>& alongColumn);
  void (*colours[2][2])(const AhdSensed<T>& source, size_t n, const AhdColours<T>& result);
  void (*scores[2])(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n,
                    T* scores);
  void (*sums)(const T* const (&scores)[3][2], size_t n, int8_t* even, int8_t* odd, T* evenColumns,
               T* oddColumns);
  const PixelRows<T, ChosenRows<T>>* pixels;
};

// The planes and scores of a strip of the frame: they are functions of the mirrored frame alone,
// so that one sweep serves every rectangle that the strip holds.
template <class T>
class AhdRows {
 public:
  static constexpr int kReach = 5;  // rows and columns that a pixel depends on, on either side

  // strip: its rows are to be asked for in ascending order. shift: samples are scaled up by it, and
  // down again when stored.
  AhdRows(const CfaFrame<T>& frame, CfaRect strip, int shift, Level level);

  explicit operator bool() const;

  // Makes everything of row y of the frame up to the sums of its scores.
  void goTo(int y);

  // Before a row is stored: its running choice begins anew in column x.
  void beginAt(int x);

  // Stores the row's columns x .. xEnd - 1.
  void store(int x, int xEnd, T* pixels, RowCopies<T>& copies);

 private:
  static constexpr int kAlongRow = 0, kAlongColumn = 1, kImages = 2;

  void load(int y);
  void green(int y);    // of rows y - 2 .. y + 2
  void colours(int y);  // of rows y - 1 .. y + 1
  void scores(int y);   // of rows y - 1 .. y + 1
  void sums(int y);     // of rows y - 1 .. y + 1

  unsigned slot(int y) const { return static_cast<unsigned>(y + 2 * kReach); }
  unsigned greenParity(int y) const { return frame_.isGreen(first_, y) ? 0 : 1; }
  AhdGreen<T> greenOf(int image, int y) const;
  AhdColours<T> coloursOf(int image, int y) const;
  ImageHalves<T> halves(int image, int y) const;

  CfaFrame<T> frame_;
  int first_;       // the frame column of element 0 of the even halves
  size_t columns_;  // with the reach on either side
  size_t n_;        // elements of a half row
  int top_;         // the first row that is loaded
  int loaded_;      // rows before it are
  int y_ = 0;       // the row that is gone to
  int shift_;
  const AhdKernels<T>& kernels_;
  LumaChromaWeights<T> weights_;
  HalfRowRing<T> mosaic_, green_, colours_, scores_, scoreColumns_, choice_;
  HalfRowRing<Signed<T>> differences_, lumaChroma_;
  HalfRowRing<int8_t> sums_;
};

}  // namespace vistrel::core
