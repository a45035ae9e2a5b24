// The row kernels of pixel grouping.
#if defined(VISTREL_PIXEL_GROUPING_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PIXEL_GROUPING_ROWS_INL_H
#undef VISTREL_PIXEL_GROUPING_ROWS_INL_H
#else
#define VISTREL_PIXEL_GROUPING_ROWS_INL_H
#endif

#include "demosaic/green_first_rows-inl.h"
#include "demosaic/pixel_grouping_formulas-inl.h"

namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
constexpr const auto& kPixelGroupingKernels = kGreenFirstKernels<T, PixelGrouping<T>>;

}  // namespace vistrel::core::VISTREL_NAMESPACE

#endif
