// The row kernels of Hamilton and Adams.
#if defined(VISTREL_HAMILTON_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_HAMILTON_ROWS_INL_H
#undef VISTREL_HAMILTON_ROWS_INL_H
#else
#define VISTREL_HAMILTON_ROWS_INL_H
#endif

#include "demosaic/green_first_rows-inl.h"
#include "demosaic/hamilton_formulas-inl.h"

namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
constexpr const auto& kHamiltonKernels = kGreenFirstKernels<T, Hamilton<T>>;

}  // namespace vistrel::core::VISTREL_NAMESPACE

#endif
