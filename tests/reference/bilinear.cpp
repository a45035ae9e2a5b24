#include "tests/reference/guarded.h"

namespace reference {

namespace {

template <class T>
void fill(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    const NeighboursXY<T> n{pixel, region.S};
    const auto B = [&](int dx, int dy) { return n.B(dx, dy); };
    const auto G = [&](int dx, int dy) { return n.G(dx, dy); };
    const auto R = [&](int dx, int dy) { return n.R(dx, dy); };
    const auto store = [&](int channel, int v) { pixel[channel] = static_cast<T>(v); };
    switch (site) {
      case SITE_R:
        store(kBlue, (B(1, 1) + B(-1, -1) + B(1, -1) + B(-1, 1)) >> 2);
        store(kGreen, (G(1, 0) + G(-1, 0) + G(0, -1) + G(0, 1)) >> 2);
        break;
      case SITE_B:
        store(kGreen, (G(1, 0) + G(-1, 0) + G(0, -1) + G(0, 1)) >> 2);
        store(kRed, (R(1, 1) + R(-1, -1) + R(1, -1) + R(-1, 1)) >> 2);
        break;
      case SITE_GR:
        store(kBlue, (B(0, 1) + B(0, -1)) >> 1);
        store(kRed, (R(1, 0) + R(-1, 0)) >> 1);
        break;
      case SITE_GB:
        store(kBlue, (B(1, 0) + B(-1, 0)) >> 1);
        store(kRed, (R(0, 1) + R(0, -1)) >> 1);
        break;
    }
  });
}

}  // namespace

REFERENCE_GUARDED(ImageColorBilinear, fill)

}  // namespace reference
