#include "cfa/border.h"

namespace vistrel {

namespace {

template <class T>
struct Border {
  const CfaFrame<T>& frame;
  CfaRect roi;
  T* dst;  // the rectangle's first pixel
  ptrdiff_t dstStep;

  void pixel(int x, int y) const {
    const auto s = [&](int dx, int dy) { return frame.mirrored(x + dx, y + dy); };
    const auto two = [&](int a, int b) { return (a + b + frame.rounding.two) >> 1; };
    const auto four = [&](int a, int b, int c, int d) {
      return (a + b + c + d + frame.rounding.four) >> 2;
    };
    int own, green, opposite;  // own: the colour that the row holds beside green
    if (frame.isGreen(x, y)) {
      own = two(s(-1, 0), s(1, 0));
      green = s(0, 0);
      opposite = two(s(0, -1), s(0, 1));
    } else {
      own = s(0, 0);
      green = four(s(0, -1), s(-1, 0), s(1, 0), s(0, 1));
      opposite = four(s(-1, -1), s(1, -1), s(-1, 1), s(1, 1));
    }
    T* rgb = dst + (y - roi.y) * dstStep + 3 * (x - roi.x);
    rgb[0] = static_cast<T>(frame.isRedRow(y) ? own : opposite);
    rgb[1] = static_cast<T>(green);
    rgb[2] = static_cast<T>(frame.isRedRow(y) ? opposite : own);
  }

  void run(int x, int xEnd, int y) const {
    for (; x < xEnd; ++x) pixel(x, y);
  }

  void all() const {
    const int xEnd = roi.x + roi.width, yEnd = roi.y + roi.height;
    const int right = std::max(2, frame.size.width - 2), bottom = std::max(2, frame.size.height - 2);
    for (int y = roi.y; y < yEnd; ++y) {
      if (y < 2 || y >= bottom) {
        run(roi.x, xEnd, y);
      } else {
        run(roi.x, std::min(2, xEnd), y);
        run(std::max(roi.x, right), xEnd, y);
      }
    }
  }
};

}  // namespace

void ownBayerBorder_8u(const CfaFrame<uint8_t>& frame, CfaRect srcRoi, uint8_t* pDst,
                       ptrdiff_t dstStep) {
  Border<uint8_t>{frame, srcRoi, pDst, dstStep}.all();
}

void ownBayerBorder_16u(const CfaFrame<uint16_t>& frame, CfaRect srcRoi, uint16_t* pDst,
                        ptrdiff_t dstStep) {
  Border<uint16_t>{frame, srcRoi, pDst, dstStep}.all();
}

}  // namespace vistrel
