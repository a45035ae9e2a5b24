// The row kernels of adaptive homogeneity-directed demosaicing.
#if defined(VISTREL_AHD_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_AHD_ROWS_INL_H
#undef VISTREL_AHD_ROWS_INL_H
#else
#define VISTREL_AHD_ROWS_INL_H
#endif

#include "cfa/ahd/ahd_formulas-inl.h"
#include "cfa/ahd/ahd_kernels.h"
#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "common/simd/split-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Scales samples up; bits beyond the sixteenth are lost.
template <class T>
void ahdScale(T* half, size_t n, int shift) {
  const T kept = static_cast<T>(shift < 16 ? ~0 : 0);
  for (size_t k = 0; k < n; k += kLanes<T>)
    store(half + k, (load(half + k) & kept) << madeHere(shift & 15));
}

// Green at the red or blue sites of a row, and the differences of the sensed samples to it, in both
// images.
template <class T, int parity>
void ahdGreen(const HalfRowWindow<T, 2>& mosaic, size_t n, const AhdGreen<T>& alongRow,
              const AhdGreen<T>& alongColumn) {
  const HalfRowWindow<T, 2> rows = mosaic;
  const AhdGreen<T> h = alongRow, v = alongColumn;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    Vec<Widened<T>> hGreen[2], vGreen[2];
    for (size_t i = 0; i < 2; ++i) {
      const size_t at = k + i * kWidenedLanes<T>;
      const ValueTap<LowHigh<T>, 2, parity> m{rows, k, {i}};
      hGreen[i] = Ahd<T>::greenAlongRow(m);
      vGreen[i] = Ahd<T>::greenAlongColumn(m);
      store(h.difference + at, m(0, 0) - hGreen[i]);
      store(v.difference + at, m(0, 0) - vGreen[i]);
    }
    store(h.green + k, LowHigh<T>::join(hGreen));
    store(v.green + k, LowHigh<T>::join(vGreen));
  }
}

// Reads differences of red and blue sites, relative to sites of one column parity.
template <class T, int parity>
struct DifferenceTap {
  const Widened<T>* const (&rows)[3];
  ptrdiff_t k;

  VISTREL_INLINE Vec<Widened<T>> operator()(int dx, int dy) const {
    return load(rows[dy + 1] + k + ((parity + dx) >> 1));
  }
};

template <class T>
VISTREL_INLINE void storeAt(const LumaChroma<T>& to, size_t k, const LumaChromaValues<T>& of) {
  store(to.y + k, of.y);
  store(to.u + k, of.u);
  store(to.v + k, of.v);
}

// Red and blue of a row of one image, from its green and the differences of sensed colours.
template <class T, int greenParity, bool redRow>
void ahdColours(const AhdSensed<T>& source, size_t n, const AhdColours<T>& result) {
  constexpr int g = greenParity, c = 1 - greenParity;
  const AhdSensed<T> s = source;
  const AhdColours<T> to = result;
  const LumaChromaWeights<T> w = *source.weights;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    Vec<Widened<T>> along[2], across[2], opposite[2];
    for (size_t i = 0; i < 2; ++i) {
      const size_t at = k + i * kWidenedLanes<T>;
      const DifferenceTap<T, g> atGreen{s.differences, static_cast<ptrdiff_t>(at)};
      const DifferenceTap<T, c> atColour{s.differences, static_cast<ptrdiff_t>(at)};
      const Vec<Widened<T>> green = loadWidened(s.green[g] + at),
                            other = loadWidened(s.green[c] + at);
      const Vec<Widened<T>> own = loadWidened(s.own + at);
      along[i] = Ahd<T>::along(green, atGreen);
      across[i] = Ahd<T>::across(green, atGreen);
      opposite[i] = Ahd<T>::opposite(other, atColour);
      storeAt(
          to.lumaChroma[g], at,
          lumaChromaOf<T>(redRow ? along[i] : across[i], green, redRow ? across[i] : along[i], w));
      storeAt(to.lumaChroma[c], at,
              lumaChromaOf<T>(redRow ? own : opposite[i], other, redRow ? opposite[i] : own, w));
    }
    store(to.along + k, LowHigh<T>::join(along));
    store(to.across + k, LowHigh<T>::join(across));
    store(to.opposite + k, LowHigh<T>::join(opposite));
  }
}

// Reads luma and chroma of one image, relative to sites of one column parity.
template <class T, int parity>
struct LumaChromaTap {
  const LumaChromaWindow<T>& window;
  ptrdiff_t k;

  VISTREL_INLINE LumaChromaValues<T> operator()(int dx, int dy) const {
    const int column = parity + dx;
    const LumaChroma<T>& half = window.row[dy + 1][column & 1];
    const ptrdiff_t at = k + (column >> 1);
    return {load(half.y + at), load(half.u + at), load(half.v + at)};
  }
};

template <class T, int parity>
void ahdScores(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n, T* scores) {
  using Tap = LumaChromaTap<T, parity>;
  const LumaChromaWindow<T> alongRow = h, alongColumn = v;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    const ptrdiff_t low = static_cast<ptrdiff_t>(k), high = low + ptrdiff_t{kWidenedLanes<T>};
    store(scores + k, LowHigh<T>::join({score<T>(Tap{alongRow, low}, Tap{alongColumn, low}),
                                        score<T>(Tap{alongRow, high}, Tap{alongColumn, high})}));
  }
}

// Sums of 3x3 scores, minus nine times 4. rows: three rows of two halves.
template <class T>
void ahdSums(const T* const (&rows)[3][2], size_t n, int8_t* __restrict even,
             int8_t* __restrict odd, T* __restrict evenColumns, T* __restrict oddColumns) {
  for (size_t k = 0; k <= n; ++k) {
    evenColumns[k] = static_cast<T>(rows[0][0][k] + rows[1][0][k] + rows[2][0][k]);
    oddColumns[k] = static_cast<T>(rows[0][1][k] + rows[1][1][k] + rows[2][1][k]);
  }
  for (size_t k = 1; k < n; ++k) {
    even[k] = static_cast<int8_t>(oddColumns[k - 1] + evenColumns[k] + oddColumns[k] - 36);
    odd[k] = static_cast<int8_t>(evenColumns[k] + oddColumns[k] + evenColumns[k + 1] - 36);
  }
}

// Takes pixels from the image along columns where the choice is all ones, otherwise from the image
// along rows.
struct FillChosen {
  template <class T>
  VISTREL_INLINE static Vec<T> chosen(const T* h, const T* v, const T* choice, size_t k) {
    const Vec<T> c = load(choice + k);
    return (load(v + k) & c) | (load(h + k) & ~c);
  }
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const ChosenRows<T>& rows, size_t k) {
    const int shift = madeHere(rows.shift);
    Halves<T> halves;
    for (int p = 0; p < 2; ++p) {
      const T* c = rows.choice[p];
      halves.own[p] = chosen(rows.h.own[p], rows.v.own[p], c, k) >> shift;
      halves.green[p] = chosen(rows.h.green[p], rows.v.green[p], c, k) >> shift;
      halves.opposite[p] = chosen(rows.h.opposite[p], rows.v.opposite[p], c, k) >> shift;
    }
    return halves;
  }
};

template <class T>
constexpr AhdKernels<T> kAhdKernels = {splitRow<T>,
                                       ahdScale<T>,
                                       {ahdGreen<T, 0>, ahdGreen<T, 1>},
                                       {{ahdColours<T, 0, false>, ahdColours<T, 0, true>},
                                        {ahdColours<T, 1, false>, ahdColours<T, 1, true>}},
                                       {ahdScores<T, 0>, ahdScores<T, 1>},
                                       ahdSums<T>,
                                       &kPixelKernels<T, ChosenRows<T>, FillChosen>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
