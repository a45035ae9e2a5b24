// The kernels of green_first.h, from formulas in signed arithmetic.
#include "common/lanes.inl"
#if VISTREL_LEVEL >= 1
#include "common/registers.inl"
#endif
#include "common/wide.inl"
#include "common/pixel_row.inl"
#include "common/taps.inl"

template <class T, class Formulas, int parity>
void greenRow(const HalfRowWindow<T, 2>& mosaic, size_t n, T* __restrict green) {
  const HalfRowWindow<T, 2> rows = mosaic;
  for (size_t k = 0; k < n; k += kLanes<T>)
    store(green + k, narrow<T>(Formulas::green(WideTap<T, 2, parity>{rows, k}),
                               Formulas::green(WideTap<T, 2, parity>{rows, k + kWideLanes<T>})));
}

template <class Formulas>
struct FillGreenFirst {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const GreenFirstRows<T>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    constexpr size_t half = kWideLanes<T>;
    Wide<T> along[2], across[2], opposite[2];
    for (size_t i = 0; i < 2; ++i) {
      const size_t at = k + i * half;
      const WideTap<T, 1, g> mosaicAtGreen{rows.mosaic, at}, greenAtGreen{rows.green, at};
      const WideTap<T, 1, c> mosaicAtColour{rows.mosaic, at}, greenAtColour{rows.green, at};
      along[i] = Formulas::along(mosaicAtGreen, greenAtGreen);
      across[i] = Formulas::across(mosaicAtGreen, greenAtGreen);
      opposite[i] = Formulas::opposite(mosaicAtColour, greenAtColour);
    }
    Halves<T> h;
    h.own[g] = narrow<T>(along[0], along[1]);
    h.green[g] = load(rows.green.half[1][g] + k);
    h.opposite[g] = narrow<T>(across[0], across[1]);
    h.own[c] = load(rows.mosaic.half[1][c] + k);
    h.green[c] = load(rows.green.half[1][c] + k);
    h.opposite[c] = narrow<T>(opposite[0], opposite[1]);
    return h;
  }
};

template <class T, class Formulas>
constexpr GreenFirstKernels<T> kGreenFirst = {
    {greenRow<T, Formulas, 0>, greenRow<T, Formulas, 1>},
    kPixelRows<T, GreenFirstRows<T>, FillGreenFirst<Formulas>>};
