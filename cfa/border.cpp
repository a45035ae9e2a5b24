#include "cfa/border.h"

namespace vistrel::core {

namespace {

// A coordinate just beyond an edge becomes the one on the pixel's other side.
constexpr int mirror(int c, int last) { return c < 0 ? -c : c > last ? 2 * last - c : c; }

template <class T>
void pixel(const CfaFrame<T>& frame, int x, int y, T* rgb) {
  const auto line = [&](int dy) {
    return frame.samples + mirror(y + dy, frame.size.height - 1) * frame.step;
  };
  const T* const lines[3] = {line(-1), line(0), line(1)};
  const int columns[3] = {mirror(x - 1, frame.size.width - 1), x,
                          mirror(x + 1, frame.size.width - 1)};
  const Rounding& r = frame.rounding;
  const auto s = [&](int dx, int dy) -> int {
    return static_cast<int>(lines[dy + 1][columns[dx + 1]] & r.mask);
  };
  const auto two = [&](int a, int b) { return (a + b + r.two) >> 1; };
  const auto four = [&](int a, int b, int c, int d) { return (a + b + c + d + r.four) >> 2; };
  int own, green, opposite;  // own: the colour that the row senses besides green
  if (frame.mosaic.isGreenAt(x, y)) {
    own = two(s(-1, 0), s(1, 0));
    green = s(0, 0);
    opposite = two(s(0, -1), s(0, 1));
  } else {
    own = s(0, 0);
    green = four(s(0, -1), s(-1, 0), s(1, 0), s(0, 1));
    opposite = four(s(-1, -1), s(1, -1), s(-1, 1), s(1, 1));
  }
  rgb[0] = static_cast<T>(frame.mosaic.isRedRow(y) ? own : opposite);
  rgb[1] = static_cast<T>(green);
  rgb[2] = static_cast<T>(frame.mosaic.isRedRow(y) ? opposite : own);
}

}  // namespace

template <class T, int row>
void ownBayerBrdHrz(const CfaFrame<T>& rows, CfaRect srcRoi, T* pDst) {
  const CfaFrame<T> frame = rows;  // a copy that no store can change
  for (int i = 0; i < srcRoi.width; ++i) pixel(frame, srcRoi.x + i, row, pDst + 3 * i);
}

template <class T, int column>
void ownBayerBrdVrt(const CfaFrame<T>& columns, CfaRect srcRoi, T* pDst, ptrdiff_t dstStep) {
  const CfaFrame<T> frame = columns;
  for (int i = 0; i < srcRoi.height; ++i) pixel(frame, column, srcRoi.y + i, pDst + i * dstStep);
}

#define VISTREL_INSTANTIATE(T)                                                    \
  template void ownBayerBrdHrz<T, 0>(const CfaFrame<T>&, CfaRect, T*);            \
  template void ownBayerBrdHrz<T, 1>(const CfaFrame<T>&, CfaRect, T*);            \
  template void ownBayerBrdVrt<T, 0>(const CfaFrame<T>&, CfaRect, T*, ptrdiff_t); \
  template void ownBayerBrdVrt<T, 1>(const CfaFrame<T>&, CfaRect, T*, ptrdiff_t)

VISTREL_INSTANTIATE(uint8_t);
VISTREL_INSTANTIATE(uint16_t);

}  // namespace vistrel::core
