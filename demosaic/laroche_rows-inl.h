// The row kernels of Laroche and Prescott.
#if defined(VISTREL_LAROCHE_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_LAROCHE_ROWS_INL_H
#undef VISTREL_LAROCHE_ROWS_INL_H
#else
#define VISTREL_LAROCHE_ROWS_INL_H
#endif

#include "demosaic/green_first_rows-inl.h"
#include "demosaic/laroche_formulas-inl.h"

namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
constexpr const auto& kLarocheKernels = kGreenFirstKernels<T, Laroche<T>>;

}  // namespace vistrel::core::VISTREL_NAMESPACE

#endif
