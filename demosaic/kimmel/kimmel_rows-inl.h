// The row kernels of Kimmel's passes in floats or doubles, and the conversion from and to samples.
#if defined(VISTREL_KIMMEL_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_KIMMEL_ROWS_INL_H
#undef VISTREL_KIMMEL_ROWS_INL_H
#else
#define VISTREL_KIMMEL_ROWS_INL_H
#endif

#include "common/depth.h"
#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "demosaic/kimmel/kimmel_formulas-inl.h"
#include "demosaic/kimmel/kimmel_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T, class Real>
void toReals(const T* __restrict samples, ptrdiff_t from, ptrdiff_t to, Real* __restrict reals) {
  for (ptrdiff_t k = from; k < to; ++k) reals[k] = samples[k];
}
template <class T, class Real>
void toSamples(const Real* __restrict reals, size_t n, T* __restrict samples) {
  for (size_t k = 0; k < n; ++k) samples[k] = static_cast<T>(static_cast<int>(reals[k]));
}

// The value that is stored for v, which is never negative. A double that exceeds 32 bits is stored
// as 0; a bounded hue never leads to one.
template <class T>
VISTREL_INLINE Vec<float> stored(Vec<float> v) {
  return truncated(smaller(v, Vec<float>{} + float{kLimit<T>}));
}
template <class T>
VISTREL_INLINE Vec<double> stored(Vec<double> v) {
  const Vec<double> zero{};
  return truncated(select(v < 0x1p31, smaller(v, zero + kLimit<T>), zero));
}

template <class T, class Real, int parity>
void greenRow(const HalfRowWindow<Real, 2>& mosaic, size_t n, Real* __restrict green,
              Real* __restrict hue) {
  const HalfRowWindow<Real, 2> rows = mosaic;
  for (size_t k = 0; k < n; k += kLanes<Real>) {
    const Tap<Real, 2, parity> m{rows, k};
    const auto g = stored<T>(Kimmel::green(m));
    store(green + k, g);
    store(hue + k, hueOf(m(0, 0), g));
  }
}

// Plain hues, which are not stored but computed here.
template <class Real, int parity>
struct PlainHueTap {
  Tap<Real, 2, parity> mosaic;
  Tap<Real, 1, parity> green;

  VISTREL_INLINE Vec<Real> operator()(int dx, int dy) const {
    return plainHue(mosaic(dx, dy), green(dx, dy));
  }
};

template <class T, class Real, int parity, bool isTail>
void oppositeRow(const KimmelDiagonals<Real>& source, size_t from, size_t n,
                 Real* __restrict colour, Real* __restrict hue) {
  const KimmelDiagonals<Real> rows = source;
  for (size_t k = from; k < n; k += kLanes<Real>) {
    const Tap<Real, 2, parity> m{rows.mosaic, k};
    const Tap<Real, 1, parity> g{rows.green, k}, h{rows.hue, k};
    Vec<Real> v;
    if constexpr (isTail)
      v = Kimmel::opposite(g(0, 0), m, PlainHueTap<Real, parity>{m, g});
    else
      v = Kimmel::opposite(g(0, 0), m, h);
    v = stored<T>(v);
    store(colour + k, v);
    store(hue + k, hueOf(v, g(0, 0)));
  }
}

template <class T, class Real, int parity>
void atGreenRow(const KimmelCross<Real>& source, size_t n, Real* __restrict own,
                Real* __restrict opposite) {
  const KimmelCross<Real> rows = source;
  for (size_t k = 0; k < n; k += kLanes<Real>) {
    const Tap<Real, 1, parity> g{rows.green, k}, x{rows.own, k}, hueOfX{rows.ownHue, k},
        z{rows.opposite, k}, hueOfZ{rows.oppositeHue, k};
    store(own + k, stored<T>(Kimmel::atGreen(x, g, hueOfX)));
    store(opposite + k, stored<T>(Kimmel::atGreen(z, g, hueOfZ)));
  }
}

struct FillComplete {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const CompleteHalves<T>& rows, size_t k) {
    Halves<T> h;
    for (size_t parity = 0; parity < 2; ++parity) {
      h.own[parity] = load(rows.own[parity] + k);
      h.green[parity] = load(rows.green[parity] + k);
      h.opposite[parity] = load(rows.opposite[parity] + k);
    }
    return h;
  }
};

template <class T, class Real>
constexpr KimmelKernels<T, Real> kKimmelKernels = {
    toReals<T, Real>,
    toSamples<T, Real>,
    {greenRow<T, Real, 0>, greenRow<T, Real, 1>},
    {oppositeRow<T, Real, 0, false>, oppositeRow<T, Real, 1, false>},
    {oppositeRow<T, Real, 0, true>, oppositeRow<T, Real, 1, true>},
    {atGreenRow<T, Real, 0>, atGreenRow<T, Real, 1>},
    kPixelKernels<T, CompleteHalves<T>, FillComplete>};

template <class T>
constexpr const auto& kKimmelDoubleKernels = kKimmelKernels<T, double>;
template <class T>
constexpr const auto& kKimmelFloatKernels = kKimmelKernels<T, float>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
