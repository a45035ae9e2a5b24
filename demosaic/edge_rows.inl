// Rows of the edge demosaic. Lane: signed, of a sample's length or twice that.
#include "common/simd/lanes.inl"
#include "common/simd/split.inl"
#if VISTREL_LEVEL >= 1
#include "common/simd/registers.inl"
#endif
#include "common/rows/pixel_row.inl"
#include "common/simd/wide.inl"
#include "demosaic/edge.inl"

template <class Lane, class T>
VISTREL_INLINE VectorOf<Lane> loadLanes(const T* p) {
  if constexpr (sizeof(T) == sizeof(Lane))
    return (VectorOf<Lane>)load(p);
  else
    return loadWide(p);
}

template <class T, class Lane, int reach, int parity>
struct LaneTap {
  const HalfRowWindow<T, reach>& window;
  ptrdiff_t k;

  VISTREL_INLINE VectorOf<Lane> operator()(int dx, int dy) const {
    const int column = parity + dx;
    return loadLanes<Lane>(window.half[dy + reach][column & 1] + k + (column >> 1));
  }
};

// Measures of sites of one kind, seen from sites of one column parity.
template <class Lane, int parity>
struct MeasureTap {
  const MeasureWindow<Lane>& window;
  ptrdiff_t k;

#define VISTREL_MEASURE(name)                                                                  \
  VISTREL_INLINE VectorOf<Lane> name(int dx, int dy) const {                                   \
    return load(static_cast<const Lane*>(window.row[dy + 1].name) + k + ((parity + dx) >> 1)); \
  }
  VISTREL_MEASURE(vertical)
  VISTREL_MEASURE(verticals)
  VISTREL_MEASURE(horizontal)
  VISTREL_MEASURE(horizontals)
  VISTREL_MEASURE(inRow)
  VISTREL_MEASURE(inColumn)
#undef VISTREL_MEASURE
};

// The red or blue sites of a row, from one to the left of the region to one to its right.
template <class T, class Lane, int parity>
void measureRow(const HalfRowWindow<T, 2>& mosaic, size_t n, const MeasureRow<Lane>& to) {
  const HalfRowWindow<T, 2> rows = mosaic;
  const MeasureRow<Lane> out = to;
  for (ptrdiff_t k = -1; k <= static_cast<ptrdiff_t>(n); k += kLanes<Lane>) {
    const LaneTap<T, Lane, 2, parity> m{rows, k};
    store(out.vertical + k, Measures::vertical(m));
    store(out.verticals + k, Measures::verticals(m));
    store(out.horizontal + k, Measures::horizontal(m));
    store(out.horizontals + k, Measures::horizontals(m));
    store(out.inRow + k, Measures::inRow(m));
    store(out.inColumn + k, Measures::inColumn(m));
  }
}

// The part of a block's samples that fits a vector of lanes, several or the only one.
template <class T, class Lane>
constexpr size_t kParts = sizeof(Lane) / sizeof(T);

template <class T, class Lane>
VISTREL_INLINE VectorOf<T> joined(const VectorOf<Lane> (&parts)[kParts<T, Lane>]) {
  if constexpr (kParts<T, Lane> == 1)
    return (VectorOf<T>)parts[0];
  else
    return narrow<T>(parts[0], parts[1]);
}

// Limits beyond a word let sums wrap in it.
template <class V>
VISTREL_INLINE V limited(V v, int limit) {
  v = clampTo(v, limit);
  if constexpr (sizeof(V{}[0]) == 4) v &= 0xFFFF;
  return v;
}

template <class Lane>
struct FillEdge {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const EdgeWindow<T, Lane>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    typedef VectorOf<Lane> V;
    constexpr size_t parts = kParts<T, Lane>;
    V own[2][parts], green[2][parts], opposite[2][parts], t[4];
    for (int i = 0; i < 4; ++i) t[i] = V{} + rows.thresholds[i];
    for (size_t i = 0; i < parts; ++i) {
      const ptrdiff_t at = static_cast<ptrdiff_t>(k + i * kLanes<Lane>);
      const LaneTap<T, Lane, 1, g> mg{rows.mosaic, at};
      const LaneTap<T, Lane, 1, c> mc{rows.mosaic, at};
      const MeasureTap<Lane, g> qg{rows.measures, at};
      const MeasureTap<Lane, c> qc{rows.measures, at};
      const V smoothed = Edge::smoothed(mg, qg, t);
      own[g][i] = limited(Edge::along(mg, qg, smoothed), rows.limit);
      green[g][i] = limited(smoothed, rows.limit);
      opposite[g][i] = limited(Edge::acrossRows(mg, qg, smoothed), rows.limit);
      own[c][i] = limited(mc(0, 0), rows.limit);
      green[c][i] = limited(Edge::green(qc), rows.limit);
      opposite[c][i] = limited(Edge::opposite(mc, qc), rows.limit);
    }
    Halves<T> h;
    for (int parity = 0; parity < 2; ++parity) {
      h.own[parity] = joined<T, Lane>(own[parity]);
      h.green[parity] = joined<T, Lane>(green[parity]);
      h.opposite[parity] = joined<T, Lane>(opposite[parity]);
    }
    return h;
  }
};

template <class T>
bool holdsBits(const T* row, size_t n, unsigned bits) {
  T all = 0;
  for (size_t i = 0; i < n; ++i) all |= row[i];
  return all >> bits == 0;
}

template <class T, class Lane>
constexpr EdgeKernels<T, Lane> kEdgeOf = {splitPairs<T>,
                                          holdsBits<T>,
                                          {measureRow<T, Lane, 0>, measureRow<T, Lane, 1>},
                                          kPixelRows<T, EdgeWindow<T, Lane>, FillEdge<Lane>>};

template <class Types>
constexpr const auto& kEdge = kEdgeOf<typename Types::Sample, typename Types::Lane>;
