// The row kernels of the edge demosaic. Lane: signed, of the sample's length or twice that.
#if defined(VISTREL_EDGE_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_EDGE_ROWS_INL_H
#undef VISTREL_EDGE_ROWS_INL_H
#else
#define VISTREL_EDGE_ROWS_INL_H
#endif

#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "common/simd/split-inl.h"
#include "demosaic/edge/edge_formulas-inl.h"
#include "demosaic/edge/edge_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Samples as values in lanes of type Lane.
template <class T, class Lane>
using EdgeValues = std::conditional_t<sizeof(T) == sizeof(Lane), AsSigned<T>, LowHigh<T>>;

// Reads measures of red or blue sites, relative to sites of one column parity.
template <class Lane, int parity>
struct MeasureTap {
  const MeasureWindow<Lane>& window;
  ptrdiff_t k;

#define VISTREL_MEASURE(name)                                                                  \
  VISTREL_INLINE Vec<Lane> name(int dx, int dy) const {                                        \
    return load(static_cast<const Lane*>(window.row[dy + 1].name) + k + ((parity + dx) >> 1)); \
  }
  VISTREL_MEASURE(columnActivity3)
  VISTREL_MEASURE(columnActivity5)
  VISTREL_MEASURE(rowActivity3)
  VISTREL_MEASURE(rowActivity5)
  VISTREL_MEASURE(inRow)
  VISTREL_MEASURE(inColumn)
#undef VISTREL_MEASURE
};

// Measures the red or blue sites of a row, from one to the left of the region to one to its right.
template <class T, class Lane, int parity>
void measureRow(const HalfRowWindow<T, 2>& mosaic, size_t n, const MeasureRow<Lane>& to) {
  const HalfRowWindow<T, 2> rows = mosaic;
  const MeasureRow<Lane> out = to;
  for (ptrdiff_t k = -1; k <= static_cast<ptrdiff_t>(n); k += kLanes<Lane>) {
    const ValueTap<EdgeValues<T, Lane>, 2, parity> m{rows, k};
    store(out.columnActivity3 + k, Measures::columnActivity3(m));
    store(out.columnActivity5 + k, Measures::columnActivity5(m));
    store(out.rowActivity3 + k, Measures::rowActivity3(m));
    store(out.rowActivity5 + k, Measures::rowActivity5(m));
    store(out.inRow + k, Measures::inRow(m));
    store(out.inColumn + k, Measures::inColumn(m));
  }
}

// With limits above 16 bits, results wrap at 16 bits.
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
    using V = Vec<Lane>;
    using Values = EdgeValues<T, Lane>;
    constexpr size_t parts = Values::kParts;
    V own[2][parts], green[2][parts], opposite[2][parts], t[4];
    for (int i = 0; i < 4; ++i) t[i] = V{} + rows.thresholds[i];
    for (size_t i = 0; i < parts; ++i) {
      const ptrdiff_t at = static_cast<ptrdiff_t>(k + i * kLanes<Lane>);
      const ValueTap<Values, 1, g> mg{rows.mosaic, k, {i}};
      const ValueTap<Values, 1, c> mc{rows.mosaic, k, {i}};
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
      h.own[parity] = Values::join(own[parity]);
      h.green[parity] = Values::join(green[parity]);
      h.opposite[parity] = Values::join(opposite[parity]);
    }
    return h;
  }
};

template <class T, class Lane>
constexpr EdgeLaneKernels<T, Lane> kEdgeLaneKernels = {
    {measureRow<T, Lane, 0>, measureRow<T, Lane, 1>},
    kPixelKernels<T, EdgeWindow<T, Lane>, FillEdge<Lane>>};

template <class T>
constexpr EdgeKernels<T> kEdgeKernels = {splitRowAndBits<T>, kEdgeLaneKernels<T, int16_t>,
                                         kEdgeLaneKernels<T, Widened<T>>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
