#include <cstdlib>

#include "tests/reference/guarded.h"

namespace reference {

namespace {

// wa * a + wb * b; the integers are widened through single precision.
double weighted(double wa, int a, double wb, int b) {
  return wa * static_cast<double>(static_cast<float>(a)) +
         wb * static_cast<double>(static_cast<float>(b));
}

template <class T>
T stored(double v) {
  return static_cast<T>(clamp(trunc32(v), 0, kLimit<T>));
}

template <class T>
void fillGreen(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (isGreen(site)) return;
    const NeighboursXY<T> n{pixel, region.S};
    const int Q = site == SITE_R ? kBlue : kRed;  // not the sensed one: it reads zeros here
    const int av = 2 * n.C(Q, 0, 0) - n.C(Q, 0, -2) - n.C(Q, 0, 2);
    const int ah = 2 * n.C(Q, 0, 0) - n.C(Q, -2, 0) - n.C(Q, 2, 0);
    const int dv = std::abs(n.G(0, -1) - n.G(0, 1)) + std::abs(av);
    const int dh = std::abs(n.G(-1, 0) - n.G(1, 0)) + std::abs(ah);
    const int sv = n.G(0, -1) + n.G(0, 1);
    const int sh = n.G(-1, 0) + n.G(1, 0);
    if (dh < dv)
      pixel[kGreen] = stored<T>(weighted(0.5, sh, 0.25, ah));
    else if (dh > dv)
      pixel[kGreen] = stored<T>(weighted(0.5, sv, 0.25, av));
    else
      pixel[kGreen] = stored<T>(weighted(0.25, sv + sh, 0.125, av + ah));
  });
}

// Colour X at a green site, from the neighbours at (dx, dy) and (-dx, -dy).
template <class T>
T straight(const NeighboursXY<T>& n, int X, int dx, int dy) {
  return stored<T>(weighted(0.5, n.C(X, dx, dy) + n.C(X, -dx, -dy), 0.25,
                            2 * n.G(0, 0) - n.G(-dx, -dy) - n.G(dx, dy)));
}

template <class T>
T diagonal(const NeighboursXY<T>& n, int X) {
  const int a1 = 2 * n.G(0, 0) - n.G(-1, -1) - n.G(1, 1);
  const int a2 = 2 * n.G(0, 0) - n.G(1, -1) - n.G(-1, 1);
  const int d1 = std::abs(n.C(X, -1, -1) - n.C(X, 1, 1)) + std::abs(a1);
  const int d2 = std::abs(n.C(X, 1, -1) - n.C(X, -1, 1)) + std::abs(a2);
  const int s1 = n.C(X, -1, -1) + n.C(X, 1, 1);
  const int s2 = n.C(X, 1, -1) + n.C(X, -1, 1);
  if (d1 < d2) return stored<T>(weighted(0.5, s1, 0.5, a1));
  if (d1 > d2) return stored<T>(weighted(0.5, s2, 0.5, a2));
  return stored<T>(weighted(0.25, s1 + s2, 0.25, a1 + a2));
}

template <class T>
void fillRedAndBlue(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    const NeighboursXY<T> n{pixel, region.S};
    switch (site) {
      case SITE_R: pixel[kBlue] = diagonal(n, kBlue); break;
      case SITE_B: pixel[kRed] = diagonal(n, kRed); break;
      case SITE_GR:
        pixel[kBlue] = straight(n, kBlue, 0, 1);
        pixel[kRed] = straight(n, kRed, 1, 0);
        break;
      case SITE_GB:
        pixel[kBlue] = straight(n, kBlue, 1, 0);
        pixel[kRed] = straight(n, kRed, 0, 1);
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

REFERENCE_GUARDED(ImageColorGradientHamilton, fill)

}  // namespace reference
