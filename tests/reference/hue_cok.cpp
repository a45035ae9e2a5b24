#include "tests/reference/guarded.h"

namespace reference {

namespace {

template <class T>
void fillGreen(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (isGreen(site)) return;
    const NeighboursRC<T> n{pixel, region.S};
    pixel[kGreen] = static_cast<T>((n.G(0, -1) + n.G(0, 1) + n.G(-1, 0) + n.G(1, 0)) >> 2);
  });
}

template <class T>
void fillRedAndBlue(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    const NeighboursRC<T> n{pixel, region.S};
    const double G0 = n.G(0, 0);
    const auto H = [&](int X, int r, int c) {  // the hue ratio there
      const double g = n.G(r, c);
      return g != 0 ? static_cast<double>(n.C(X, r, c)) / g : 0.0;
    };
    const auto store = [&](int channel, double v) {
      pixel[channel] = static_cast<T>(clamp(trunc32(v), 0, kLimit<T>));
    };
    const auto diagonal = [&](int X) {
      return G0 * (H(X, -1, -1) + H(X, -1, 1) + H(X, 1, 1) + H(X, 1, -1)) * 0.25;
    };
    switch (site) {
      case SITE_R: store(kBlue, diagonal(kBlue)); break;
      case SITE_B: store(kRed, diagonal(kRed)); break;
      case SITE_GR:
        store(kBlue, (H(kBlue, -1, 0) + H(kBlue, 1, 0)) * G0 * 0.5);
        store(kRed, G0 * (H(kRed, 0, -1) + H(kRed, 0, 1)) * 0.5);
        break;
      case SITE_GB:
        store(kBlue, (H(kBlue, 0, -1) + H(kBlue, 0, 1)) * G0 * 0.5);
        store(kRed, G0 * (H(kRed, -1, 0) + H(kRed, 1, 0)) * 0.5);
        break;
    }
  });
}

template <class T>
void fill(T* work, const Region& region) {
  fillGreen(work, region);
  fillRedAndBlue(work, region);
}

}  // namespace

REFERENCE_GUARDED(ImageColorHueCok, fill)

}  // namespace reference
