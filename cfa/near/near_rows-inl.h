// The row kernels of nearest neighbours inside a frame, where every neighbour exists.
#if defined(VISTREL_NEAR_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_NEAR_ROWS_INL_H
#undef VISTREL_NEAR_ROWS_INL_H
#else
#define VISTREL_NEAR_ROWS_INL_H
#endif

#include "cfa/near/near_formulas-inl.h"
#include "cfa/near/near_kernels.h"
#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "common/simd/split-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
void keepBits(T* half, size_t n, T mask) {
  for (size_t k = 0; k < n; ++k) half[k] &= mask;
}

template <class Means>
struct FillNear {
  using F = Near<Means>;
  template <class T, int parity>
  using Samples = Tap<T, 2, parity>;
  template <class T, int parity>
  using Signed = ValueTap<LowHigh<T>, 2, parity>;

  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const HalfRowWindow<T, 2>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    const Samples<T, g> atGreen{rows, k};
    const Samples<T, c> atColour{rows, k};
    Halves<T> h;
    h.green[g] = atGreen(0, 0);
    h.own[c] = atColour(0, 0);
    if constexpr (Means::kWide) {
      const Signed<T, g> lowGreen{rows, k, {0}}, highGreen{rows, k, {1}};
      const Signed<T, c> lowColour{rows, k, {0}}, highColour{rows, k, {1}};
      h.own[g] = LowHigh<T>::join({F::along(lowGreen), F::along(highGreen)});
      h.opposite[g] = LowHigh<T>::join({F::across(lowGreen), F::across(highGreen)});
      h.green[c] = LowHigh<T>::join({F::green(lowColour), F::green(highColour)});
      h.opposite[c] = LowHigh<T>::join({F::opposite(lowColour), F::opposite(highColour)});
    } else {
      h.own[g] = F::along(atGreen);
      h.opposite[g] = F::across(atGreen);
      h.green[c] = F::green(atColour);
      h.opposite[c] = F::opposite(atColour);
    }
    return h;
  }
};

template <class T, class Means>
constexpr const auto& kNearPixelKernels = kPixelKernels<T, HalfRowWindow<T, 2>, FillNear<Means>>;

// Bytes are never scaled.
template <class T, class Means>
using MeansOf = std::conditional_t<sizeof(T) == 1, RoundedMeans, Means>;

template <class T>
constexpr NearKernels<T> kNearKernels = {
    splitRow<T>,
    keepBits<T>,
    {&kNearPixelKernels<T, MeansOf<T, PlainMeans>>,
     &kNearPixelKernels<T, MeansOf<T, HalfRoundedMeans>>, &kNearPixelKernels<T, RoundedMeans>}};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
