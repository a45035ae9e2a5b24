#include <cstdlib>

#include "tests/reference/guarded.h"

namespace reference {

namespace {

template <class T>
void fillGreen(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (isGreen(site)) return;
    const NeighboursXY<T> n{pixel, region.S};
    const int K = site == SITE_R ? kRed : kBlue;
    const int dv = std::abs(((n.C(K, 0, 2) + n.C(K, 0, -2)) >> 1) - n.C(K, 0, 0));
    const int dh = std::abs(((n.C(K, 2, 0) + n.C(K, -2, 0)) >> 1) - n.C(K, 0, 0));
    int g;
    if (dh < dv)
      g = (n.G(-1, 0) + n.G(1, 0)) >> 1;
    else if (dh > dv)
      g = (n.G(0, 1) + n.G(0, -1)) >> 1;
    else
      g = (n.G(-1, 0) + n.G(1, 0) + n.G(0, -1) + n.G(0, 1)) >> 2;
    pixel[kGreen] = static_cast<T>(g);
  });
}

// The pixel's green plus the mean of colour X minus green over the four diagonal neighbours.
template <class T>
int diagonal(const NeighboursXY<T>& n, int X) {
  const auto difference = [&](int dx, int dy) { return n.C(X, dx, dy) - n.G(dx, dy); };
  return n.G(0, 0) +
         ((difference(1, 1) + difference(-1, 1) + difference(1, -1) + difference(-1, -1)) >> 2);
}

// The same over the neighbours at (dx, dy) and (-dx, -dy).
template <class T>
int straight(const NeighboursXY<T>& n, int X, int dx, int dy) {
  const auto difference = [&](int x, int y) { return n.C(X, x, y) - n.G(x, y); };
  return n.G(0, 0) + ((difference(dx, dy) + difference(-dx, -dy)) >> 1);
}

template <class T>
void fillRedAndBlue(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    const NeighboursXY<T> n{pixel, region.S};
    const auto store = [&](int channel, int v) {
      pixel[channel] = static_cast<T>(clamp(v, 0, kLimit<T>));
    };
    switch (site) {
      case SITE_R: store(kBlue, diagonal(n, kBlue)); break;
      case SITE_B: store(kRed, diagonal(n, kRed)); break;
      case SITE_GR:
        store(kBlue, straight(n, kBlue, 0, 1));
        store(kRed, straight(n, kRed, 1, 0));
        break;
      case SITE_GB:
        store(kBlue, straight(n, kBlue, 1, 0));
        store(kRed, straight(n, kRed, 0, 1));
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

REFERENCE_GUARDED(ImageColorGradientLaroche, fill)

}  // namespace reference
