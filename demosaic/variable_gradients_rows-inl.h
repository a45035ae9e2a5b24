#if defined(VISTREL_VARIABLE_GRADIENTS_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_VARIABLE_GRADIENTS_ROWS_INL_H
#undef VISTREL_VARIABLE_GRADIENTS_ROWS_INL_H
#else
#define VISTREL_VARIABLE_GRADIENTS_ROWS_INL_H
#endif

#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "demosaic/variable_gradients_formulas-inl.h"
#include "demosaic/variable_gradients_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class Values>
struct FillVariableGradients {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const HalfRowWindow<T, 2>& rows, size_t k) {
    using V = typename Values::Value;
    constexpr int g = greenParity, c = 1 - greenParity;
    const V start = V{} + (sizeof(V{}[0]) == 2 ? 0x7FFF : 0xFFFF);
    V own[Values::kParts], opposite[Values::kParts], green[Values::kParts],
        diagonal[Values::kParts];
    for (size_t i = 0; i < Values::kParts; ++i) {
      const ValueTap<Values, 2, g> atGreen{rows, k, {i}};
      const ValueTap<Values, 2, c> atColour{rows, k, {i}};
      const auto lacksColours = Missing<T, V>::at(AtGreen{}, atGreen, start);
      const auto lacksGreen = Missing<T, V>::at(AtColour{}, atColour, start);
      own[i] = lacksColours.first;
      opposite[i] = lacksColours.second;
      green[i] = lacksGreen.first;
      diagonal[i] = lacksGreen.second;
    }
    Halves<T> h;
    h.own[g] = Values::join(own);
    h.green[g] = load(rows.half[2][g] + k);
    h.opposite[g] = Values::join(opposite);
    h.own[c] = load(rows.half[2][c] + k);
    h.green[c] = Values::join(green);
    h.opposite[c] = Values::join(diagonal);
    return h;
  }
};

template <class T, class Values>
constexpr const auto& kVariableGradientsPixelKernels =
    kPixelKernels<T, HalfRowWindow<T, 2>, FillVariableGradients<Values>>;

template <class T>
constexpr VariableGradientsKernels<T> kVariableGradientsKernels = {
    kVariableGradientsPixelKernels<T, EvenOdd<T>>, kVariableGradientsPixelKernels<T, FastSums<T>>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
