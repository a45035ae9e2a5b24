#include "tests/reference/guarded.h"

namespace reference {

namespace {

template <class T>
void fill(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    const NeighboursXY<T> n{pixel, region.S};
    const auto store = [&](int channel, int v) { pixel[channel] = static_cast<T>(v); };
    switch (site) {
      case SITE_R:
        store(kBlue, (n.B(1, 1) + n.B(-1, -1) + n.B(1, -1) + n.B(-1, 1)) >> 2);
        store(kGreen, (n.G(1, 0) + n.G(-1, 0) + n.G(0, -1) + n.G(0, 1)) >> 2);
        break;
      case SITE_B:
        store(kGreen, (n.G(1, 0) + n.G(-1, 0) + n.G(0, -1) + n.G(0, 1)) >> 2);
        store(kRed, (n.R(1, 1) + n.R(-1, -1) + n.R(1, -1) + n.R(-1, 1)) >> 2);
        break;
      case SITE_GR:
        store(kBlue, (n.B(0, 1) + n.B(0, -1)) >> 1);
        store(kRed, (n.R(1, 0) + n.R(-1, 0)) >> 1);
        break;
      case SITE_GB:
        store(kBlue, (n.B(1, 0) + n.B(-1, 0)) >> 1);
        store(kRed, (n.R(0, 1) + n.R(0, -1)) >> 1);
        break;
    }
  });
}

}  // namespace

REFERENCE_GUARDED(ImageColorBilinear, fill)

}  // namespace reference
