#if defined(VISTREL_BILINEAR_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_BILINEAR_ROWS_INL_H
#undef VISTREL_BILINEAR_ROWS_INL_H
#else
#define VISTREL_BILINEAR_ROWS_INL_H
#endif

#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "demosaic/bilinear_formulas-inl.h"
#include "demosaic/direct_rows-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

struct FillBilinear {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const HalfRowWindow<T, 1>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    const Tap<T, 1, g> atGreen{rows, k};
    const Tap<T, 1, c> atColour{rows, k};
    Halves<T> h;
    h.own[g] = Bilinear::along(atGreen);
    h.green[g] = atGreen(0, 0);
    h.opposite[g] = Bilinear::across(atGreen);
    h.own[c] = atColour(0, 0);
    h.green[c] = Bilinear::green(atColour);
    h.opposite[c] = Bilinear::opposite(atColour);
    return h;
  }
};

template <class T>
constexpr const auto& kBilinearKernels = kPixelKernels<T, HalfRowWindow<T, 1>, FillBilinear>;
template <class T>
constexpr const auto& kDirectBilinear = kDirectKernels<T, HalfRowWindow<T, 1>, FillBilinear>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
