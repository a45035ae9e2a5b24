// Hirakawa and Parks, "Adaptive homogeneity-directed demosaicing algorithm" (2005): the frame is
// rebuilt twice, with green along rows and along columns, and each pixel is taken from the image
// in which more of its neighbours look alike.
#include "common/lanes.inl"
#if VISTREL_LEVEL >= 1
#include "common/registers.inl"
#endif
#include "common/wide.inl"
#include "common/pixel_row.inl"
#include "common/split.inl"
#include "common/taps.inl"

// The mean of the neighbours a, b, led by the curvature of the site's own colour l, c, r, but never
// beyond a and b. Both terms round down, each by itself.
template <class V>
VISTREL_INLINE V directedGreen(V a, V b, V l, V c, V r) {
  const V led = ((c + c - l - r) >> 2) + ((a + b) >> 1);
  return larger(smaller(led, larger(a, b)), smaller(a, b));
}

template <class T, int parity>
VISTREL_INLINE void greenPart(const HalfRowWindow<T, 2>& rows, size_t k, Wide<T>& alongRow,
                              Wide<T>& alongColumn) {
  const WideTap<T, 2, parity> m{rows, k};
  alongRow = directedGreen(m(-1, 0), m(1, 0), m(-2, 0), m(0, 0), m(2, 0));
  alongColumn = directedGreen(m(0, -1), m(0, 1), m(0, -2), m(0, 0), m(0, 2));
}

// Green at the red or blue sites of a row, in both images.
template <class T, int parity>
void ahdGreen(const HalfRowWindow<T, 2>& mosaic, size_t n, T* alongRow, T* alongColumn) {
  const HalfRowWindow<T, 2> rows = mosaic;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    Wide<T> h[2], v[2];
    for (size_t i = 0; i < 2; ++i) greenPart<T, parity>(rows, k + i * kWideLanes<T>, h[i], v[i]);
    store(alongRow + k, narrow<T>(h[0], h[1]));
    store(alongColumn + k, narrow<T>(v[0], v[1]));
  }
}

// Red and blue by differences to one image's green.
template <class T>
struct ColourByGreen {
  static constexpr int kLargest = static_cast<T>(~T{0});

  template <class M, class G>
  VISTREL_INLINE static auto along(M m, G g) {  // at a green site: the colour of this row
    return clampTo(g(0, 0) + (((m(-1, 0) - g(-1, 0)) + (m(1, 0) - g(1, 0))) >> 1), kLargest);
  }
  template <class M, class G>
  VISTREL_INLINE static auto across(M m, G g) {  // there, the colour of the rows above and below
    return clampTo(g(0, 0) + (((m(0, -1) - g(0, -1)) + (m(0, 1) - g(0, 1))) >> 1), kLargest);
  }
  template <class M, class G>
  VISTREL_INLINE static auto opposite(M m, G g) {  // at a red or blue site: the diagonals' colour
    return clampTo(g(0, 0) + (((m(-1, -1) - g(-1, -1)) + (m(1, -1) - g(1, -1)) +
                               (m(-1, 1) - g(-1, 1)) + (m(1, 1) - g(1, 1))) >> 2),
                   kLargest);
  }
};

template <class T, int greenParity>
void ahdColours(const HalfRowWindow<T, 1>& mosaicRows, const HalfRowWindow<T, 1>& greenRows,
                size_t n, T* along, T* across, T* opposite) {
  using F = ColourByGreen<T>;
  const HalfRowWindow<T, 1> mosaic = mosaicRows, green = greenRows;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    Wide<T> a[2], b[2], c[2];
    for (size_t i = 0; i < 2; ++i) {
      const size_t at = k + i * kWideLanes<T>;
      const WideTap<T, 1, greenParity> m{mosaic, at}, g{green, at};
      const WideTap<T, 1, 1 - greenParity> mColour{mosaic, at}, gColour{green, at};
      a[i] = F::along(m, g);
      b[i] = F::across(m, g);
      c[i] = F::opposite(mColour, gColour);
    }
    store(along + k, narrow<T>(a[0], a[1]));
    store(across + k, narrow<T>(b[0], b[1]));
    store(opposite + k, narrow<T>(c[0], c[1]));
  }
}

// Luma and chroma of a half row, without offsets.
template <class T>
void ahdLumaChroma(const T* __restrict r, const T* __restrict g, const T* __restrict b, size_t n,
                   const LumaChroma<T>& to) {
  using Signed = typename LumaChroma<T>::Value;
  Signed* __restrict y = to.y;
  Signed* __restrict u = to.u;
  Signed* __restrict v = to.v;
  for (size_t k = 0; k < n; ++k) {
    const int R = r[k], G = g[k], B = b[k];
    y[k] = static_cast<Signed>((66 * R + 129 * G + 25 * B + 128) >> 8);
    u[k] = static_cast<Signed>((-38 * R - 74 * G + 112 * B + 128) >> 8);
    v[k] = static_cast<Signed>((112 * R - 94 * G - 18 * B + 128) >> 8);
  }
}

struct Distance {
  int luma, chroma;
};

// The chroma distance wraps in 32 bits and is compared as it stands.
template <class T>
VISTREL_INLINE Distance distance(const LumaChroma<T>& a, size_t i, const LumaChroma<T>& b,
                                 size_t k) {
  const int dy = a.y[i] - b.y[k];
  const unsigned du = static_cast<unsigned>(a.u[i] - b.u[k]);
  const unsigned dv = static_cast<unsigned>(a.v[i] - b.v[k]);
  return {dy < 0 ? -dy : dy, static_cast<int>(du * du + dv * dv)};
}

VISTREL_INLINE int isWithin(Distance d, int luma, int chroma) {
  return (d.luma <= luma) & (d.chroma <= chroma);
}

VISTREL_INLINE int count(Distance a, Distance b, Distance c, Distance d, int luma, int chroma) {
  return isWithin(a, luma, chroma) + isWithin(b, luma, chroma) + isWithin(c, luma, chroma) +
         isWithin(d, luma, chroma);
}

// How many more of the four neighbours look alike in the image along rows (h) than in the one along
// columns (v), at the columns of one parity.
template <class T, int parity>
void ahdScores(const LumaChromaWindow<T>& h, const LumaChromaWindow<T>& v, size_t n,
               int8_t* __restrict scores) {
  constexpr int left = parity - 1, right = parity;  // elements of the other half
  for (size_t k = 0; k < n; ++k) {
    const auto& hc = h[1][parity];
    const auto& vc = v[1][parity];
    const Distance hl = distance(h[1][1 - parity], k + left, hc, k);
    const Distance hr = distance(h[1][1 - parity], k + right, hc, k);
    const Distance hu = distance(h[0][parity], k, hc, k), hd = distance(h[2][parity], k, hc, k);
    const Distance vl = distance(v[1][1 - parity], k + left, vc, k);
    const Distance vr = distance(v[1][1 - parity], k + right, vc, k);
    const Distance vu = distance(v[0][parity], k, vc, k), vd = distance(v[2][parity], k, vc, k);
    const int luma = smaller(larger(hl.luma, hr.luma), larger(vu.luma, vd.luma));
    const int chroma = smaller(larger(hl.chroma, hr.chroma), larger(vu.chroma, vd.chroma));
    scores[k] = static_cast<int8_t>(count(hl, hr, hu, hd, luma, chroma) -
                                    count(vl, vr, vu, vd, luma, chroma));
  }
}

// Sums of 3x3 scores. rows: three rows of two halves.
inline void ahdSums(const int8_t* const (&rows)[3][2], size_t n, int8_t* __restrict even,
                    int8_t* __restrict odd, int8_t* __restrict columnsEven,
                    int8_t* __restrict columnsOdd) {
  for (size_t k = 0; k <= n; ++k) {
    columnsEven[k] = static_cast<int8_t>(rows[0][0][k] + rows[1][0][k] + rows[2][0][k]);
    columnsOdd[k] = static_cast<int8_t>(rows[0][1][k] + rows[1][1][k] + rows[2][1][k]);
  }
  for (size_t k = 1; k < n; ++k) {
    even[k] = static_cast<int8_t>(columnsOdd[k - 1] + columnsEven[k] + columnsOdd[k]);
    odd[k] = static_cast<int8_t>(columnsEven[k] + columnsOdd[k] + columnsEven[k + 1]);
  }
}

// From the image along columns where the choice is all ones, else from the one along rows.
struct FillChosen {
  template <class T>
  VISTREL_INLINE static VectorOf<T> chosen(const T* h, const T* v, const T* choice, size_t k) {
    const VectorOf<T> c = load(choice + k);
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
constexpr AhdKernels<T> kAhd = {
    splitPairs<T>,
    {ahdGreen<T, 0>, ahdGreen<T, 1>},
    {ahdColours<T, 0>, ahdColours<T, 1>},
    ahdLumaChroma<T>,
    {ahdScores<T, 0>, ahdScores<T, 1>},
    ahdSums,
    &kPixelRows<T, ChosenRows<T>, FillChosen>};
