// The row kernels of the directional demosaic. Lane: signed, of 16 bits for samples of at most
// twelve bits, otherwise of 32.
#if defined(VISTREL_DIRECTIONAL_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_DIRECTIONAL_ROWS_INL_H
#undef VISTREL_DIRECTIONAL_ROWS_INL_H
#else
#define VISTREL_DIRECTIONAL_ROWS_INL_H
#endif

#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "common/simd/split-inl.h"
#include "demosaic/directional/directional_formulas-inl.h"
#include "demosaic/directional/directional_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class Lane, int greenParity>
void directionalDifferences(const HalfRowWindow<Lane, 2>& samples, size_t n,
                            Lane* const (&alongRow)[2], Lane* const (&alongColumn)[2]) {
  using D = Directional<Lane>;
  constexpr int g = greenParity, c = 1 - greenParity;
  const HalfRowWindow<Lane, 2> rows = samples;
  Lane* const h[] = {alongRow[0], alongRow[1]};
  Lane* const v[] = {alongColumn[0], alongColumn[1]};
  for (size_t k = 0; k < n; k += kLanes<Lane>) {
    const Tap<Lane, 2, g> atGreen{rows, k};
    const Tap<Lane, 2, c> atColour{rows, k};
    store(h[g] + k, D::differenceAtGreen(atGreen));
    store(h[c] + k, D::differenceAtColour(atColour));
    store(v[g] + k, D::differenceAtGreen(Transposed{atGreen}));
    store(v[c] + k, D::differenceAtColour(Transposed{atColour}));
  }
}

// Along: makes the taps of a direction.
struct AlongRow {
  template <class M>
  VISTREL_INLINE static M of(M m) {
    return m;
  }
};
struct AlongColumn {
  template <class M>
  VISTREL_INLINE static auto of(M m) {
    return Transposed{m};
  }
};

template <class Lane, int greenParity, class Along>
void directionalChanges(const HalfRowWindow<Lane, 1>& differences, size_t n,
                        Change<Lane>* const (&changes)[2], Lane* means) {
  using D = Directional<Lane>;
  constexpr int g = greenParity, c = 1 - greenParity;
  const HalfRowWindow<Lane, 1> rows = differences;
  Change<Lane>* const to[] = {changes[0], changes[1]};
  for (size_t k = 0; k < n; k += kLanes<Lane>) {
    const auto atGreen = Along::of(Tap<Lane, 1, g>{rows, k});
    const auto atColour = Along::of(Tap<Lane, 1, c>{rows, k});
    store(to[g] + k, D::change(atGreen(-1, 0), atGreen(1, 0)));
    store(to[c] + k, D::change(atColour(-1, 0), atColour(1, 0)));
    store(means + k, D::mean(atGreen));
  }
}

template <class Lane, int greenParity>
void directionalLogs(const HalfRowWindow<Change<Lane>, 1>& changes, size_t n, Lane* logs) {
  const HalfRowWindow<Change<Lane>, 1> rows = changes;
  for (size_t k = 0; k < n; k += kLanes<Lane>)
    store(logs + k, Directional<Lane>::logOfRoughness(Tap<Change<Lane>, 1, greenParity>{rows, k}));
}

template <class Lane, int greenParity>
void directionalBlends(const DirectionWindow<Lane>& row, const DirectionWindow<Lane>& column,
                       size_t n, Lane* blends, Lane* sharesOfColumn) {
  using D = Directional<Lane>;
  using At = Tap<Lane, 1, 1 - greenParity>;
  const DirectionWindow<Lane> h = row, v = column;
  for (size_t k = 0; k < n; k += kLanes<Lane>) {
    const At rowLogs{h.logs, k}, columnLogs{v.logs, k};
    const auto share = D::shareOfColumn(rowLogs, columnLogs);
    const auto alongRow = D::blendAlong(At{h.means, k}, rowLogs);
    const auto alongColumn = D::blendAlong(Transposed{At{v.means, k}}, Transposed{columnLogs});
    store(blends + k, blend(alongRow, alongColumn, share));
    store(sharesOfColumn + k, share);
  }
}

template <class Lane, int greenParity>
void directionalSettle(const HalfRowWindow<Lane, 2>& samples, const HalfRowWindow<Lane, 2>& blends,
                       const Lane* sharesOfColumn, size_t n, Lane* differences) {
  constexpr int c = 1 - greenParity;
  const HalfRowWindow<Lane, 2> s = samples, b = blends;
  for (size_t k = 0; k < n; k += kLanes<Lane>)
    store(differences + k, Directional<Lane>::settled(Tap<Lane, 2, c>{s, k}, Tap<Lane, 2, c>{b, k},
                                                      load(sharesOfColumn + k)));
}

template <class Lane, int greenParity, class Along>
void directionalColourChanges(const HalfRowWindow<Lane, 1>& samples,
                              const HalfRowWindow<Lane, 1>& differences, size_t n,
                              const ColourChanges<Lane>& to) {
  using D = Directional<Lane>;
  const HalfRowWindow<Lane, 1> sampleRows = samples, differenceRows = differences;
  const ColourChanges<Lane> out = to;
  for (size_t k = 0; k < n; k += kLanes<Lane>) {
    const auto s = Along::of(Tap<Lane, 1, greenParity>{sampleRows, k});
    const auto d = Along::of(Tap<Lane, 1, greenParity>{differenceRows, k});
    store(out.differences + k, D::change(d(-1, 0), d(1, 0)));
    store(out.samples + k, D::distance(s(-1, 0), s(1, 0)));
  }
}

// Samples and values in lanes of type Lane.
template <class T, class Lane>
using DirectionalValues = std::conditional_t<sizeof(T) == sizeof(Lane), AsSigned<T>, LowHigh<T>>;

template <class Lane>
struct FillDirectional {
  using D = Directional<Lane>;
  using V = Vec<Lane>;

  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const SettledWindow<Lane>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    using Values = DirectionalValues<T, Lane>;
    V own[2][Values::kParts], green[2][Values::kParts], opposite[2][Values::kParts];
    for (size_t i = 0; i < Values::kParts; ++i) {
      const size_t at = k + i * kLanes<Lane>;
      const Tap<Lane, 1, g> sg{rows.samples, at}, dg{rows.differences, at};
      const Tap<Lane, 1, c> sc{rows.samples, at}, dc{rows.differences, at};
      own[g][i] = clampTo(along(sg, dg, rows, at), rows.limit);
      green[g][i] = sg(0, 0);
      opposite[g][i] = clampTo(across(sg, dg, rows, at), rows.limit);
      own[c][i] = sc(0, 0);
      green[c][i] = clampTo(D::green(sc, dc), rows.limit);
      opposite[c][i] = clampTo(D::opposite(sc, dc), rows.limit);
    }
    Halves<T> h;
    for (int parity = 0; parity < 2; ++parity) {
      h.own[parity] = Values::join(own[parity]);
      h.green[parity] = Values::join(green[parity]);
      h.opposite[parity] = Values::join(opposite[parity]);
    }
    return h;
  }

 private:
  template <class M>
  VISTREL_INLINE static V along(M s, M d, const SettledWindow<Lane>& rows, size_t k) {
    const auto sum = [&](auto plane) {
      return load(rows.alongRow[0].*plane + k) + load(rows.alongRow[1].*plane + k) +
             load(rows.alongRow[2].*plane + k);
    };
    return D::beside(s, d, sum(&ColourChanges<Lane>::differences),
                     sum(&ColourChanges<Lane>::samples));
  }
  template <class M>
  VISTREL_INLINE static V across(M s, M d, const SettledWindow<Lane>& rows, size_t k) {
    const auto sum = [&](const Change<Lane>* plane) {
      return load(plane + k - 1) + load(plane + k) + load(plane + k + 1);
    };
    return D::beside(Transposed{s}, Transposed{d}, sum(rows.alongColumn.differences),
                     sum(rows.alongColumn.samples));
  }
};

template <class T, class Lane>
constexpr DirectionalKernels<T, Lane> kDirectionalKernels = {
    splitRow<T, Lane>,
    {directionalDifferences<Lane, 0>, directionalDifferences<Lane, 1>},
    {directionalChanges<Lane, 0, AlongRow>, directionalChanges<Lane, 1, AlongRow>},
    {directionalChanges<Lane, 0, AlongColumn>, directionalChanges<Lane, 1, AlongColumn>},
    {directionalLogs<Lane, 0>, directionalLogs<Lane, 1>},
    {directionalBlends<Lane, 0>, directionalBlends<Lane, 1>},
    {directionalSettle<Lane, 0>, directionalSettle<Lane, 1>},
    {directionalColourChanges<Lane, 0, AlongRow>, directionalColourChanges<Lane, 1, AlongRow>},
    {directionalColourChanges<Lane, 0, AlongColumn>,
     directionalColourChanges<Lane, 1, AlongColumn>},
    kPixelKernels<T, SettledWindow<Lane>, FillDirectional<Lane>>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
