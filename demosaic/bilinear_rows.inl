#include "common/lanes.inl"
#if VISTREL_LEVEL >= 1
#include "common/registers.inl"
#endif
#include "demosaic/bilinear.inl"
#include "demosaic/pixel_row.inl"

template <class T>
constexpr const auto& kBilinearRows = kPixelRows<T, Bilinear>;
