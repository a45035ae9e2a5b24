#include "cfa/near/near_rows.h"

#include "cfa/border.h"
#include "common/rows/nontemporal.h"
#include "common/simd/simd.h"

#define VISTREL_BODY "cfa/near/near_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

constexpr int kReach = 2;

template <class T>
NearRows<T>::NearRows(const CfaFrame<T>& frame, CfaRect srcRoi, Level level)
    : frame_(frame), roi_(srcRoi), x0_(std::max(srcRoi.x, kReach)),
      x1_(std::min(srcRoi.x + srcRoi.width, frame.size.width - kReach)),
      loaded_(std::max(srcRoi.y, kReach) - kReach), kernels_(*VISTREL_AT_LEVEL(level, kNear<T>)),
      ring_(2 * kReach + 1, 2, static_cast<size_t>(std::max(x1_ - x0_, 0)) + 2 * kReach) {}

// Columns from kReach before the interior's first, so that its first is column 0 of element 1.
template <class T>
void NearRows<T>::load(int y) {
  const size_t columns = static_cast<size_t>(x1_ - x0_) + 2 * kReach;
  const T* source = frame_.samples + y * frame_.step + x0_ - kReach;
  T* even = ring_.half(unsigned(y), 0);
  T* odd = ring_.half(unsigned(y), 1);
  kernels_.split(source, columns / 2, even, odd);
  if (columns & 1) even[columns / 2] = source[columns - 1];
  if (y + 1 < frame_.size.height) prefetchRow(source + frame_.step, columns * sizeof(T));
  const T mask = static_cast<T>(frame_.rounding.mask);
  if (mask == T(~T{0})) return;
  for (T* half : {even, odd}) kernels_.keepBits(half, (columns + 1) / 2, mask);
}

template <class T>
void NearRows<T>::interior(int y, T* pixels, RowCopies<T>& copies) const {
  HalfRowWindow<T, kReach> window;
  for (int dy = -kReach; dy <= kReach; ++dy)
    for (unsigned parity = 0; parity < 2; ++parity)
      window.half[dy + kReach][parity] = ring_.half(unsigned(y + dy), parity) + kReach / 2;
  const unsigned greenParity = frame_.isGreen(x0_, y) ? 0 : 1;
  // Red is stored first here, so a row of red sites stores its own colour as others do blue.
  kernels_.pixels[frame_.rounding.four]->of[greenParity][!frame_.isRedRow(y)](
      window, static_cast<size_t>(x1_ - x0_), pixels, copies);
}

// The border comes first: then all that lies before a pixel is there when it is made.
template <class T>
void NearRows<T>::row(int y, T* pixels, RowCopies<T>& copies) {
  const int frameRow = roi_.y + y;
  ownBayerBorder(frame_, {roi_.x, frameRow, roi_.width, 1}, pixels, 0);
  const size_t end = 3 * static_cast<size_t>(roi_.width);
  if (x0_ >= x1_ || frameRow < kReach || frameRow >= frame_.size.height - kReach) {
    if (copies.plain) std::copy(pixels, pixels + end, copies.plain);
    return;
  }
  for (; loaded_ <= frameRow + kReach; ++loaded_) load(loaded_);
  const size_t from = 3 * static_cast<size_t>(x0_ - roi_.x);
  if (copies.plain) {
    const size_t to = 3 * static_cast<size_t>(x1_ - roi_.x);
    std::copy(pixels, pixels + from, copies.plain);
    std::copy(pixels + to, pixels + end, copies.plain + to);
    copies.plain += from;
  }
  interior(frameRow, pixels + from, copies);
}

template class NearRows<uint8_t>;
template class NearRows<uint16_t>;

}  // namespace vistrel::core
