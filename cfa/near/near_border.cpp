#include "cfa/near/near_border.h"

#include <algorithm>

namespace vistrel::core {

template <class T>
NearBorder<T>::NearBorder(const CfaRows<T>& frame, CfaRect roi, Arena& arena)
    : frame_(frame), roi_(roi),
      top_(arena.take<T>(size_t{kLines} * static_cast<size_t>(frame.size.width))),
      bottom_(arena.take<T>(size_t{kLines} * static_cast<size_t>(frame.size.width))) {}

// Only reads the roi's columns and one more on either side.
template <class T>
void NearBorder<T>::load(int y, const T* row) {
  const int W = frame_.size.width, fromBottom = y - (frame_.size.height - kLines);
  const int first = std::max(roi_.x - 1, 0), end = std::min(roi_.x + roi_.width + 1, W);
  const auto keep = [&](T* line) { std::copy(row + first, row + end, line + first); };
  if (y < kLines) keep(top_ + ptrdiff_t{y} * W);
  if (fromBottom >= 0) keep(bottom_ + ptrdiff_t{fromBottom} * W);
  const auto sample = [&](int x) { return first <= x && x < end ? row[x] : T{0}; };
  const unsigned place = static_cast<unsigned>(y) % kEnds;
  for (int i = 0; i < kLines; ++i)
    for (const unsigned at : {place, place + kEnds}) {
      ends_[0][at][i] = sample(i);
      ends_[1][at][i] = sample(W - kLines + i);
    }
}

template <class T>
void NearBorder<T>::write(int y, T* pixels) const {
  const int W = frame_.size.width, H = frame_.size.height;
  // lines: rows of the frame from `first` on.
  const auto strip = [&](auto kernel, const T* lines, int first, int rows) {
    const CfaFrame<T> part{lines, W, {W, rows}, frame_.mosaic.from(0, first), frame_.rounding};
    kernel(part, {roi_.x, 0, roi_.width, 1}, pixels);
  };
  if (y == 0)
    strip(ownBayerBrdHrz2U<T>, top_, 0, 2);
  else if (y == H - 1)
    strip(ownBayerBrdHrz2D<T>, lastLines(2), H - 2, 2);
  else if (y == 1)
    strip(ownBayerBrdHrz3<T>, top_, 0, 3);
  else if (y == H - 2)
    strip(ownBayerBrdHrz3<T>, lastLines(3), H - 3, 3);
  else
    writeSides(y, pixels);
}

template <class T>
void NearBorder<T>::writeSides(int y, T* pixels) const {
  const int W = frame_.size.width, x = roi_.x, end = roi_.x + roi_.width;
  constexpr CfaRect middle{0, 1, 1, 1};
  // columns: of the strip's frame, from column `part` of the three at that side.
  const auto strip = [&](auto kernel, unsigned side, int part, int columns, int at) {
    const CfaFrame<T> lines{ends_[side][static_cast<unsigned>(y - 1) % kEnds],
                            kLines,
                            {kLines, kLines},
                            frame_.mosaic.from(side == 0 ? 0 : W - kLines, y - 1),
                            frame_.rounding};
    kernel(lines.part(part, 0, {columns, kLines}), middle, pixels + 3 * (at - x), 0);
  };
  if (x == 0) strip(ownBayerBrdVrt2L<T>, 0, 0, 2, 0);
  if (W >= 3 && x <= 1 && end > 1) strip(ownBayerBrdVrt3<T>, 0, 0, 3, 1);
  if (W >= 3 && x <= W - 2 && end > W - 2) strip(ownBayerBrdVrt3<T>, 1, 0, 3, W - 2);
  if (end == W) strip(ownBayerBrdVrt2R<T>, 1, 1, 2, W - 1);
}

template class NearBorder<uint8_t>;
template class NearBorder<uint16_t>;

}  // namespace vistrel::core
