#include "cfa/border.h"

#include <algorithm>
#include <utility>

#include "common/mirror.h"

namespace vistrel::core {

namespace {

// One row of a frame, and the rows that its pixels are made from.
template <class T>
class BorderRow {
 public:
  BorderRow(const CfaFrame<T>& frame, int y)
      : rounding_(frame.rounding), columns_(frame.size.width),
        greenParity_(frame.mosaic.greenParity(y)), isRed_(frame.mosaic.isRedRow(y)) {
    for (int dy = -1; dy <= 1; ++dy)
      lines_[dy + 1] = frame.samples + mirrorOf(y + dy, frame.size.height) * frame.step;
  }

  void convert(int x, T* rgb) const {
    const int left = mirrorOf(x - 1, columns_), right = mirrorOf(x + 1, columns_);
    isGreen(x) ? convertGreen(left, x, right, rgb) : convertColour(left, x, right, rgb);
  }

  // Columns x .. end - 1. Pairs of columns need no tests.
  void convert(int x, int end, T* rgb) const {
    const auto next = [&] { convert(x++, std::exchange(rgb, rgb + 3)); };
    while (x < end && (x == 0 || isGreen(x))) next();
    for (; x + 2 <= std::min(end, columns_ - 1); x += 2, rgb += 6) {
      convertColour(x - 1, x, x + 1, rgb);
      convertGreen(x, x + 1, x + 2, rgb + 3);
    }
    while (x < end) next();
  }

 private:
  static int mirrorOf(int c, int n) {
    return static_cast<int>(mirrored(c, static_cast<size_t>(n)));
  }

  bool isGreen(int x) const { return (static_cast<unsigned>(x) & 1) == greenParity_; }

  int sample(int dy, int x) const { return static_cast<int>(lines_[dy + 1][x] & rounding_.mask); }
  int two(int a, int b) const { return (a + b + rounding_.two) >> 1; }
  int four(int a, int b, int c, int d) const { return (a + b + c + d + rounding_.four) >> 2; }

  void convertGreen(int left, int x, int right, T* rgb) const {
    store(two(sample(0, left), sample(0, right)), sample(0, x), two(sample(-1, x), sample(1, x)),
          rgb);
  }
  void convertColour(int left, int x, int right, T* rgb) const {
    store(sample(0, x), four(sample(-1, x), sample(0, left), sample(0, right), sample(1, x)),
          four(sample(-1, left), sample(-1, right), sample(1, left), sample(1, right)), rgb);
  }

  // own: the colour that the row senses besides green.
  void store(int own, int green, int opposite, T* rgb) const {
    rgb[0] = static_cast<T>(isRed_ ? own : opposite);
    rgb[1] = static_cast<T>(green);
    rgb[2] = static_cast<T>(isRed_ ? opposite : own);
  }

  const T* lines_[3];  // above, at and below the row
  Rounding rounding_;
  int columns_;
  unsigned greenParity_;
  bool isRed_;
};

}  // namespace

template <class T, int row>
void ownBayerBrdHrz(const CfaFrame<T>& rows, CfaRect srcRoi, T* pDst) {
  BorderRow<T>(rows, row).convert(srcRoi.x, srcRoi.x + srcRoi.width, pDst);
}

template <class T, int column>
void ownBayerBrdVrt(const CfaFrame<T>& columns, CfaRect srcRoi, T* pDst, ptrdiff_t dstStep) {
  for (int i = 0; i < srcRoi.height; ++i)
    BorderRow<T>(columns, srcRoi.y + i).convert(column, pDst + i * dstStep);
}

#define VISTREL_INSTANTIATE(T)                                                    \
  template void ownBayerBrdHrz<T, 0>(const CfaFrame<T>&, CfaRect, T*);            \
  template void ownBayerBrdHrz<T, 1>(const CfaFrame<T>&, CfaRect, T*);            \
  template void ownBayerBrdVrt<T, 0>(const CfaFrame<T>&, CfaRect, T*, ptrdiff_t); \
  template void ownBayerBrdVrt<T, 1>(const CfaFrame<T>&, CfaRect, T*, ptrdiff_t)

VISTREL_INSTANTIATE(uint8_t);
VISTREL_INSTANTIATE(uint16_t);

}  // namespace vistrel::core
