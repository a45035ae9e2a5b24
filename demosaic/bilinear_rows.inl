#include "common/lanes.inl"
#include "demosaic/bilinear.inl"
#include "demosaic/pixel_row.inl"

template <class T>
constexpr const auto& kBilinearRows = kPixelRows<T, Bilinear>;
