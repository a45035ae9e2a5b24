#include "cfa/near/near_border.h"

#include <algorithm>
#include <iterator>

namespace vistrel::core {

template <class T>
NearBorder<T>::NearBorder(const CfaRows<T>& frame, CfaRect roi, Arena& arena)
    : frame_(frame), roi_(roi), top_(arena.take<T>(size_t{kLines} * size_t(frame.size.width))),
      bottom_(arena.take<T>(size_t{kLines} * size_t(frame.size.width))), ends_{} {}

// Only reads the roi's columns and one more on either side.
template <class T>
void NearBorder<T>::load(int y, const T* row) {
  const int W = frame_.size.width, fromBottom = y - (frame_.size.height - kLines);
  const int first = std::max(roi_.x - 1, 0), end = std::min(roi_.x + roi_.width + 1, W);
  const auto keep = [&](T* line) { std::copy(row + first, row + end, line + first); };
  if (y < kLines) keep(top_ + ptrdiff_t{y} * W);
  if (fromBottom >= 0) keep(bottom_ + ptrdiff_t{fromBottom} * W);
  const auto sample = [&](int x) { return first <= x && x < end ? row[x] : T{0}; };
  auto& ends = ends_[unsigned(y) % std::size(ends_)];
  for (int i = 0; i < kLines; ++i) {
    ends[0][i] = sample(i);
    ends[1][i] = sample(W - kLines + i);
  }
}

template <class T>
void NearBorder<T>::write(int y, T* pixels) const {
  const auto [W, H] = frame_.size;
  const auto rows = [&](const T* lines, int first) {
    const CfaFrame<T> part{
        lines, W, {W, std::min(H, kLines)}, frame_.mosaic.from(0, first), frame_.rounding};
    ownBayerBorder(part, {roi_.x, y - first, roi_.width, 1}, pixels, 0);
  };
  if (atTop(y))
    rows(top_, 0);
  else if (atBottom(y))
    rows(bottom_, H - kLines);
  else
    writeSides(y, pixels);
}

template <class T>
auto NearBorder<T>::patch(int y, unsigned side) const -> Patch {
  Patch p;
  for (int j = 0; j < kLines; ++j)
    std::copy_n(ends_[unsigned(y - 1 + j) % std::size(ends_)][side], kLines,
                p.samples + j * kLines);
  return p;
}

template <class T>
void NearBorder<T>::writeSides(int y, T* pixels) const {
  const int W = frame_.size.width, x = roi_.x, end = roi_.x + roi_.width;
  constexpr CfaRect middle{0, 1, 1, 1};
  const auto strip = [&](auto kernel, const Patch& p, int first, int part, int columns, int at) {
    const CfaFrame<T> lines{
        p.samples, kLines, {kLines, kLines}, frame_.mosaic.from(first, y - 1), frame_.rounding};
    kernel(lines.part(part, 0, {columns, kLines}), middle, pixels + 3 * (at - x), 0);
  };
  const Patch left = patch(y, 0), right = patch(y, 1);
  if (x == 0) strip(ownBayerBrdVrt2L<T>, left, 0, 0, 2, 0);
  if (W >= 3 && x <= 1 && end > 1) strip(ownBayerBrdVrt3<T>, left, 0, 0, 3, 1);
  if (W >= 3 && x <= W - 2 && end > W - 2) strip(ownBayerBrdVrt3<T>, right, W - 3, 0, 3, W - 2);
  if (end == W) strip(ownBayerBrdVrt2R<T>, right, W - 3, 1, 2, W - 1);
}

template class NearBorder<uint8_t>;
template class NearBorder<uint16_t>;

}  // namespace vistrel::core
