// Hirakawa and Parks, "Adaptive homogeneity-directed demosaicing algorithm" (2005): the frame is
// rebuilt twice, with green along rows and along columns, and each pixel is taken from the image
// in which more of its neighbours look alike.
#if defined(VISTREL_AHD_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_AHD_ROWS_INL_H
#undef VISTREL_AHD_ROWS_INL_H
#else
#define VISTREL_AHD_ROWS_INL_H
#endif

#include "cfa/ahd/ahd_rows.h"
#include "common/rows/pixel_row-inl.h"
#include "common/simd/split-inl.h"
#include "common/simd/taps-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
using UnsignedWide = Vec<std::make_unsigned_t<Signed<T>>>;

// Scales samples up, and what passes the word's end away.
template <class T>
void ahdScale(T* half, size_t n, int shift) {
  const T kept = static_cast<T>(shift < 16 ? ~0 : 0);
  for (size_t k = 0; k < n; k += kLanes<T>)
    store(half + k, (load(half + k) & kept) << (shift & 15));
}

// The mean of the neighbours a, b, led by the curvature of the site's own colour l, c, r, but never
// beyond a and b. Both terms round down, each by itself.
template <class V>
VISTREL_INLINE V directedGreen(V a, V b, V l, V c, V r) {
  const V led = ((c + c - l - r) >> 2) + ((a + b) >> 1);
  return larger(smaller(led, larger(a, b)), smaller(a, b));
}

// Green at the red or blue sites of a row, and by how much these differ from it, in both images.
template <class T, int parity>
void ahdGreen(const HalfRowWindow<T, 2>& mosaic, size_t n, const AhdGreen<T>& alongRow,
              const AhdGreen<T>& alongColumn) {
  const HalfRowWindow<T, 2> rows = mosaic;
  const AhdGreen<T> h = alongRow, v = alongColumn;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    Wide<T> hGreen[2], vGreen[2];
    for (size_t i = 0; i < 2; ++i) {
      const size_t at = k + i * kWideLanes<T>;
      const ValueTap<LowHigh<T>, 2, parity> m{rows, k, {i}};
      hGreen[i] = directedGreen(m(-1, 0), m(1, 0), m(-2, 0), m(0, 0), m(2, 0));
      vGreen[i] = directedGreen(m(0, -1), m(0, 1), m(0, -2), m(0, 0), m(0, 2));
      store(h.difference + at, m(0, 0) - hGreen[i]);
      store(v.difference + at, m(0, 0) - vGreen[i]);
    }
    store(h.green + k, LowHigh<T>::join(hGreen));
    store(v.green + k, LowHigh<T>::join(vGreen));
  }
}

// Luma and chroma without offsets, of differences to green: 66 R + 129 G + 25 B, 112 B - 74 G - 38
// R and 112 R - 94 G - 18 B. The first, and steps on the way to the others, need the sign's bit.
template <class T>
VISTREL_INLINE void storeLumaChroma(const LumaChroma<T>& to, size_t k, Wide<T> R, Wide<T> G,
                                    Wide<T> B, const LumaChromaWeights<T>& w) {
  using U = UnsignedWide<T>;
  const U g = (U)G, r = (U)R - g, b = (U)B - g;
  store(to.y + k, (Wide<T>)((g * w.w220 + r * w.w66 + b * w.w25 + 128) >> 8));
  store(to.u + k, (Wide<T>)(b * w.w112 - r * w.w38 + 128) >> 8);
  store(to.v + k, (Wide<T>)(r * w.w112 - b * w.w18 + 128) >> 8);
}

// Red and blue of a row of one image, by the differences of sensed colours to its green.
template <class T, int greenParity, bool redRow>
void ahdColours(const AhdSensed<T>& source, size_t n, const AhdColours<T>& result) {
  constexpr int g = greenParity, c = 1 - greenParity;
  constexpr int kLargest = static_cast<T>(~T{0});
  const AhdSensed<T> s = source;
  const AhdColours<T> to = result;
  const LumaChromaWeights<T> w = *source.weights;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    Wide<T> along[2], across[2], opposite[2];
    for (size_t i = 0; i < 2; ++i) {
      const size_t at = k + i * kWideLanes<T>;
      // Green sites have the differences of their row at elements at - c and at + g, those of the
      // rows above and below at their own; the other sites just the other way round.
      const auto beside = load(s.differences[1] + at - c) + load(s.differences[1] + at + g);
      const auto upright = load(s.differences[0] + at) + load(s.differences[2] + at);
      const auto diagonal = load(s.differences[0] + at - g) + load(s.differences[2] + at - g) +
                            load(s.differences[0] + at + c) + load(s.differences[2] + at + c);
      const Wide<T> green = loadWide(s.green[g] + at), other = loadWide(s.green[c] + at);
      const Wide<T> own = loadWide(s.own + at);
      along[i] = clampTo(green + (beside >> 1), kLargest);
      across[i] = clampTo(green + (upright >> 1), kLargest);
      opposite[i] = clampTo(other + (diagonal >> 2), kLargest);
      storeLumaChroma<T>(to.lumaChroma[g], at, redRow ? along[i] : across[i], green,
                         redRow ? across[i] : along[i], w);
      storeLumaChroma<T>(to.lumaChroma[c], at, redRow ? own : opposite[i], other,
                         redRow ? opposite[i] : own, w);
    }
    store(to.along + k, LowHigh<T>::join(along));
    store(to.across + k, LowHigh<T>::join(across));
    store(to.opposite + k, LowHigh<T>::join(opposite));
  }
}

template <class T>
struct Distance {
  Wide<T> luma, chroma;

  VISTREL_INLINE Distance(const LumaChroma<T>& a, ptrdiff_t i, const LumaChroma<T>& b, ptrdiff_t k)
      : luma(absolute(load(a.y + i) - load(b.y + k))) {
    const auto u = (UnsignedWide<T>)(load(a.u + i) - load(b.u + k));
    const auto v = (UnsignedWide<T>)(load(a.v + i) - load(b.v + k));
    // Of bytes at most 57,480, without a sign; of words wrapped, and compared as it stands.
    const auto sum = u * u + v * v;
    chroma = (Wide<T>)(sizeof(T) == 1 ? sum ^ 0x8000 : sum);
  }
};

template <class T>
struct Limits {
  Wide<T> luma, chroma;

  // The lesser of the greater ones.
  VISTREL_INLINE Limits(const Distance<T>& a, const Distance<T>& b, const Distance<T>& c,
                        const Distance<T>& d)
      : luma(smaller(larger(a.luma, b.luma), larger(c.luma, d.luma))),
        chroma(smaller(larger(a.chroma, b.chroma), larger(c.chroma, d.chroma))) {}

  VISTREL_INLINE auto exceededBy(const Distance<T>& d) const {  // minus one if so
    return (d.luma > luma) | (d.chroma > chroma);
  }
};

// How many more of the four neighbours look alike in the image along rows than in the one along
// columns, and four.
template <class T, int parity>
VISTREL_INLINE Wide<T> score(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v,
                             ptrdiff_t k) {
  constexpr int other = 1 - parity;
  const ptrdiff_t left = k + parity - 1, right = k + parity;  // of the other columns
  const LumaChroma<T>&hHere = h[1][parity], &vHere = v[1][parity];
  const Distance<T> hLeft(hHere, k, h[1][other], left), hRight(hHere, k, h[1][other], right);
  const Distance<T> vUp(vHere, k, v[0][parity], k), vDown(vHere, k, v[2][parity], k);
  const Limits<T> limits(hLeft, hRight, vUp, vDown);
  Wide<T> sum = limits.exceededBy(hLeft) + limits.exceededBy(hRight) - limits.exceededBy(vUp) -
                limits.exceededBy(vDown) + 4;
  sum += limits.exceededBy({hHere, k, h[0][parity], k});
  sum += limits.exceededBy({hHere, k, h[2][parity], k});
  sum -= limits.exceededBy({vHere, k, v[1][other], left});
  sum -= limits.exceededBy({vHere, k, v[1][other], right});
  return sum;
}

template <class T, int parity>
void ahdScores(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n, T* scores) {
  for (size_t k = 0; k < n; k += kLanes<T>) {
    const ptrdiff_t at = static_cast<ptrdiff_t>(k);
    store(scores + k, LowHigh<T>::join({score<T, parity>(h, v, at),
                                        score<T, parity>(h, v, at + ptrdiff_t{kWideLanes<T>})}));
  }
}

// Sums of 3x3 scores, less the fours. rows: three rows of two halves.
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

// From the image along columns where the choice is all ones, else from the one along rows.
struct FillChosen {
  template <class T>
  VISTREL_INLINE static Vec<T> chosen(const T* h, const T* v, const T* choice, size_t k) {
    const Vec<T> c = load(choice + k);
    return (load(v + k) & c) | (load(h + k) & ~c);
  }
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const ChosenRows<T>& rows, size_t k) {
    Halves<T> halves;
    for (int p = 0; p < 2; ++p) {
      const T* c = rows.choice[p];
      halves.own[p] = chosen(rows.h.own[p], rows.v.own[p], c, k) >> rows.shift;
      halves.green[p] = chosen(rows.h.green[p], rows.v.green[p], c, k) >> rows.shift;
      halves.opposite[p] = chosen(rows.h.opposite[p], rows.v.opposite[p], c, k) >> rows.shift;
    }
    return halves;
  }
};

template <class T>
constexpr AhdKernels<T> kAhd = {splitPairs<T>,
                                ahdScale<T>,
                                {ahdGreen<T, 0>, ahdGreen<T, 1>},
                                {{ahdColours<T, 0, false>, ahdColours<T, 0, true>},
                                 {ahdColours<T, 1, false>, ahdColours<T, 1, true>}},
                                {ahdScores<T, 0>, ahdScores<T, 1>},
                                ahdSums<T>,
                                &kPixelRows<T, ChosenRows<T>, FillChosen>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
