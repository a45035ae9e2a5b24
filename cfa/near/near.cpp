#include "cfa/near/near.h"

#define VISTREL_BODY "cfa/near/near_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

template <class T>
NearRegion<T>::NearRegion(const CfaRows<T>& frame, CfaRect roi, Arena& arena, Level level)
    : frame_(frame), roi_(roi), x0_(std::max(roi.x, kReach)),
      x1_(std::min(roi.x + roi.width, frame.size.width - kReach)),
      kernels_(*VISTREL_AT_LEVEL(level, kNearKernels<T>)),
      ring_(2 * kReach + 1, 2, static_cast<size_t>(std::max(x1_ - x0_, 0)) + 2 * kReach, arena),
      border_(frame, roi, arena) {}

template <class T>
bool NearRegion<T>::hasInterior(int y) const {
  return hasInterior() && frame_.has(y - kReach) && frame_.has(y + kReach);
}

// Loads columns from kReach before the interior's first one, which becomes column 0 of element 1.
template <class T>
void NearRegion<T>::load(int y) {
  const T* const row = frame_.source.row(y);
  border_.load(y, row);
  if (!hasInterior()) return;
  const int first = x0_ - kReach;
  const size_t columns = static_cast<size_t>(x1_ + kReach - first);
  T* even = ring_.half(static_cast<unsigned>(y), 0);
  T* odd = ring_.half(static_cast<unsigned>(y), 1);
  kernels_.split(row + first, columns, even, odd);
  frame_.source.next().fetch(static_cast<size_t>(first), static_cast<size_t>(first) + columns);
  const T mask = static_cast<T>(frame_.rounding.mask);
  if (mask == static_cast<T>(~T{0})) return;
  for (T* half : {even, odd}) kernels_.keepBits(half, (columns + 1) / 2, mask);
}

// The border comes first: when a kernel reports a pixel, all before it must be stored.
template <class T>
void NearRegion<T>::border(int y, RowSink<T>& sink) const {
  border_.write(y, sink.pixels());
  const bool whole = !hasInterior(y);
  sink.copyPixels(0, static_cast<size_t>((whole ? roi_.x + roi_.width : x0_) - roi_.x));
  if (!whole) sink.copyPixels(static_cast<size_t>(x1_ - roi_.x), static_cast<size_t>(roi_.width));
}

template <class T>
void NearRegion<T>::interior(int y, RowSink<T>& sink) const {
  if (!hasInterior(y)) return;
  const auto window = windowOf<kReach>(y, [&](int row, unsigned parity) -> const T* {
    return ring_.half(static_cast<unsigned>(row), parity) + kReach / 2;
  });
  sink.skip(static_cast<size_t>(x0_ - roi_.x));
  // The kernels store blue, green, red. With an exchanged mosaic they store red, green, blue.
  const Mosaic mosaic = frame_.mosaic.from(x0_, 0).exchanged();
  kernels_.pixels[frame_.rounding.four]->ofRow(mosaic, y)(window, static_cast<size_t>(x1_ - x0_),
                                                          sink);
}

template class NearRegion<uint8_t>;
template class NearRegion<uint16_t>;

}  // namespace vistrel::core
