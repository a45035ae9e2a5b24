#if defined(VISTREL_MOSAIC_RING_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_MOSAIC_RING_INL_H
#undef VISTREL_MOSAIC_RING_INL_H
#else
#define VISTREL_MOSAIC_RING_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/split-inl.h"
#include "demosaic/mosaic_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// (4 * s + the four diagonals) >> 3. Shifting by two and then by one gives the same result.
// above, below: the green to the left of s in the neighbouring rows; the next element is to the
// right.
template <class T>
void smoothGreen(const T* green, const T* above, const T* below, size_t n, T* __restrict smoothed) {
  for (size_t k = 0; k < n; k += kLanes<T>) {
    const auto diagonals =
        mean4(load(above + k), load(above + k + 1), load(below + k), load(below + k + 1));
    store(smoothed + k, mean2(load(green + k), diagonals));
  }
}

template <class T>
constexpr MosaicKernels<T> kMosaicKernels{splitRow<T>, splitRowAndBits<T>, smoothGreen<T>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
