// Adaptive homogeneity-directed demosaicing of any rectangle of a frame, row by row.
#pragma once

#include <type_traits>
#include <vector>

#include "cfa/frame.h"
#include "common/half_rows.h"
#include "common/pixel_row.h"

namespace vistrel {

// Luma and chroma of a half row; words hold those of bytes.
template <class T>
struct LumaChroma {
  using Value = std::conditional_t<sizeof(T) == 1, int16_t, int32_t>;
  Value *y, *u, *v;
};

// Three rows by two halves.
template <class T>
using LumaChromaWindow = LumaChroma<T>[3][2];

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

// What each level compiles. Functions in pairs: by the column parity that they work at.
template <class T>
struct AhdKernels {
  void (*split)(const T* source, size_t pairs, T* even, T* odd);
  void (*green[2])(const HalfRowWindow<T, 2>& mosaic, size_t n, T* alongRow, T* alongColumn);
  void (*colours[2])(const HalfRowWindow<T, 1>& mosaic, const HalfRowWindow<T, 1>& green, size_t n,
                     T* along, T* across, T* opposite);
  void (*lumaChroma)(const T* r, const T* g, const T* b, size_t n, const LumaChroma<T>& to);
  void (*scores[2])(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n,
                    int8_t* scores);
  void (*sums)(const int8_t* const (&scores)[3][2], size_t n, int8_t* even, int8_t* odd,
               int8_t* columnsEven, int8_t* columnsOdd);
  const PixelRows<T, ChosenRows<T>>* pixels;
};

// The planes and scores of a strip of the frame: they are functions of the mirrored frame alone,
// so that one sweep serves every rectangle that the strip holds.
template <class T>
class AhdRows {
 public:
  // left, columns: the strip. shift: samples are scaled up by it, and down again when written.
  AhdRows(const CfaFrame<T>& frame, int left, int columns, int shift);

  explicit operator bool() const;

  // In this order for ascending y; rows that lie outside the frame are mirrored.
  void load(int y);
  void green(int y);    // of rows y - 2 .. y + 2
  void colours(int y);  // of rows y - 1 .. y + 1
  void scores(int y);   // of rows y - 1 .. y + 1

  // The sums of scores in row y, of rows y - 1 .. y + 1.
  void sums(int y);

  // Sets the choice of the columns from .. to - 1 of the strip, starting anew.
  void choose(int from, int to);

  // Columns from .. to - 1 of row y.
  void store(int y, int from, int to, T* pixels);

 private:
  static constexpr int kAlongRow = 0, kAlongColumn = 1, kImages = 2;
  static constexpr int kMargin = 5;

  unsigned slot(int y) const { return static_cast<unsigned>(y + 2 * kMargin); }
  unsigned greenParity(int y) const { return m_frame.isGreen(m_first, y) ? 0 : 1; }
  const T* greenHalf(int image, int y, unsigned parity) const;
  ImageHalves<T> halves(int image, int y) const;
  LumaChroma<T> lumaChroma(int image, int y, unsigned parity) const;
  void keepImage(int image, int y);

  CfaFrame<T> m_frame;
  int m_first;       // the frame column of element 0 of the even halves
  size_t m_columns;  // with the margin on either side
  size_t m_n;        // elements of a half row
  int m_shift;
  const AhdKernels<T>& m_kernels;
  HalfRowRing<T> m_mosaic, m_green, m_colours, m_choice;
  HalfRowRing<typename LumaChroma<T>::Value> m_lumaChroma;
  HalfRowRing<int8_t> m_scores, m_sums;
};

}  // namespace vistrel
