// The kernels of green_first.h, from formulas in signed arithmetic.
#if defined(VISTREL_GREEN_FIRST_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_GREEN_FIRST_ROWS_INL_H
#undef VISTREL_GREEN_FIRST_ROWS_INL_H
#else
#define VISTREL_GREEN_FIRST_ROWS_INL_H
#endif

#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "demosaic/green_first_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T, class Formulas, class Values, int parity>
void greenRow(const HalfRowWindow<T, 2>& mosaic, size_t n, T* __restrict green) {
  const HalfRowWindow<T, 2> rows = mosaic;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    typename Values::Value values[Values::kParts];
    for (size_t i = 0; i < Values::kParts; ++i)
      values[i] = Formulas::green(ValueTap<Values, 2, parity>{rows, k, {i}});
    store(green + k, Values::join(values));
  }
}

template <class Formulas, class Values>
struct FillGreenFirst {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const GreenFirstRows<T>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    typename Values::Value along[Values::kParts], across[Values::kParts], opposite[Values::kParts];
    for (size_t i = 0; i < Values::kParts; ++i) {
      const ValueTap<Values, 2, g> mosaicAtGreen{rows.mosaic, k, {i}};
      const ValueTap<Values, 2, c> mosaicAtColour{rows.mosaic, k, {i}};
      const ValueTap<Values, 1, g> greenAtGreen{rows.green, k, {i}};
      const ValueTap<Values, 1, c> greenAtColour{rows.green, k, {i}};
      along[i] = Formulas::along(mosaicAtGreen, greenAtGreen);
      across[i] = Formulas::across(mosaicAtGreen, greenAtGreen);
      opposite[i] = Formulas::opposite(mosaicAtColour, greenAtColour);
    }
    Halves<T> h;
    h.own[g] = Values::join(along);
    h.green[g] = load(rows.green.half[1][g] + k);
    h.opposite[g] = Values::join(across);
    h.own[c] = load(rows.mosaic.half[2][c] + k);
    h.green[c] = load(rows.green.half[1][c] + k);
    h.opposite[c] = Values::join(opposite);
    return h;
  }
};

template <class T, class Formulas, class Values>
constexpr GreenFirstPasses<T> kGreenFirstPasses = {
    {greenRow<T, Formulas, Values, 0>, greenRow<T, Formulas, Values, 1>},
    kPixelKernels<T, GreenFirstRows<T>, FillGreenFirst<Formulas, Values>>};

template <class T, class Formulas>
constexpr GreenFirstKernels<T> kGreenFirstKernels = {kGreenFirstPasses<T, Formulas, EvenOdd<T>>,
                                                     kGreenFirstPasses<T, Formulas, FastSums<T>>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
