#include <cstdlib>

#include "tests/reference/guarded.h"

namespace reference {

namespace {

// The directions in the order in which the threshold compares them.
enum Direction { N, E, S, W, NE, SE, NW, SW, kDirections };

// A direction's contribution to the sums of the site's own colour and of the two others.
struct Contribution {
  uint32_t own, first, second;
};

// The threshold's running extremes are exclusive: a gradient that lowers the minimum never
// raises the maximum.
uint32_t thresholdOf(const int (&gradient)[kDirections]) {
  uint32_t minimum = 65535, maximum = 0;
  for (int value : gradient) {
    const uint32_t g = static_cast<uint32_t>(value);
    if (g < minimum)
      minimum = g;
    else if (g > maximum)
      maximum = g;
  }
  const uint32_t d = maximum - minimum;
  const double T = 1.5 * static_cast<double>(minimum) + 0.5 * static_cast<double>(d);
  return static_cast<uint32_t>(static_cast<uint64_t>(T));
}

// c + (other - own) / n, clamped; c itself if no direction is kept.
template <class T>
T interpolated(int c, uint32_t other, uint32_t own, int n) {
  const int mean = n == 0 ? 0 : static_cast<int32_t>(other - own) / n;
  return static_cast<T>(clamp(c + mean, 0, kLimit<T>));
}

template <class T, class Contribute>
void choose(int c, const int (&gradient)[kDirections], Contribute contribute, T* first, T* second) {
  const uint32_t threshold = thresholdOf(gradient);
  Contribution sum = {0, 0, 0};
  int n = 0;
  for (int k = 0; k < kDirections; ++k) {
    if (static_cast<uint32_t>(gradient[k]) > threshold) continue;
    const Contribution part = contribute(static_cast<Direction>(k));
    sum.own += part.own;
    sum.first += part.first;
    sum.second += part.second;
    ++n;
  }
  *first = interpolated<T>(c, sum.first, sum.own, n);
  *second = interpolated<T>(c, sum.second, sum.own, n);
}

int absolute(int v) { return std::abs(v); }
int halved(int v) { return std::abs(v) >> 1; }

template <class T>
void greenCenter(T* pPixel, unsigned nRowSamples, unsigned nChannel) {
  const NeighboursXY<T> p{pPixel, static_cast<ptrdiff_t>(nRowSamples)};
  const int h = static_cast<int>(nChannel), v = 2 - h;
  const auto G = [&](int dx, int dy) { return p.G(dx, dy); };
  const auto H = [&](int dx, int dy) { return p.C(h, dx, dy); };
  const auto V = [&](int dx, int dy) { return p.C(v, dx, dy); };
  const int c = G(0, 0);
  // clang-format off
  const int gradient[kDirections] = {
      absolute(G(0, -2) - c) + absolute(V(0, -1) - V(0, 1)) + halved(H(1, -2) - H(1, 0)) +
          halved(H(-1, -2) - H(-1, 0)) + halved(G(1, -1) - G(1, 1)) + halved(G(-1, -1) - G(-1, 1)),
      absolute(G(2, 0) - c) + absolute(H(1, 0) - H(-1, 0)) + halved(V(2, -1) - V(0, -1)) +
          halved(V(2, 1) - V(0, 1)) + halved(G(1, -1) - G(-1, -1)) + halved(G(1, 1) - G(-1, 1)),
      absolute(G(0, 2) - c) + absolute(V(0, 1) - V(0, -1)) + halved(H(1, 2) - H(1, 0)) +
          halved(H(-1, 2) - H(-1, 0)) + halved(G(1, 1) - G(1, -1)) + halved(G(-1, 1) - G(-1, -1)),
      absolute(G(-2, 0) - c) + absolute(H(-1, 0) - H(1, 0)) + halved(V(-2, -1) - V(0, -1)) +
          halved(V(-2, 1) - V(0, 1)) + halved(G(-1, -1) - G(1, -1)) + halved(G(-1, 1) - G(1, 1)),
      absolute(G(2, -2) - c) + absolute(G(1, -1) - G(-1, 1)) + absolute(V(2, -1) - V(0, 1)) +
          absolute(H(1, -2) - H(-1, 0)),
      absolute(G(2, 2) - c) + absolute(G(1, 1) - G(-1, -1)) + absolute(V(2, 1) - V(0, -1)) +
          absolute(H(1, 2) - H(-1, 0)),
      absolute(G(-2, -2) - c) + absolute(G(-1, -1) - G(1, 1)) + absolute(V(-2, -1) - V(0, 1)) +
          absolute(H(-1, -2) - H(1, 0)),
      absolute(G(-2, 2) - c) + absolute(G(-1, 1) - G(1, -1)) + absolute(V(-2, 1) - V(0, -1)) +
          absolute(H(-1, 2) - H(1, 0)),
  };
  // Green, V and H.
  const auto contribution = [&](Direction direction) -> Contribution {
    const auto of = [](int green, int vertical, int horizontal) {
      return Contribution{static_cast<uint32_t>(green), static_cast<uint32_t>(vertical),
                          static_cast<uint32_t>(horizontal)};
    };
    switch (direction) {
      case N: return of((G(0, -2) + c) >> 1, V(0, -1),
                        (H(1, -2) + H(-1, -2) + H(-1, 0) + H(1, 0)) >> 2);
      case E: return of((G(2, 0) + c) >> 1, (V(2, -1) + V(0, -1) + V(0, 1) + V(2, 1)) >> 2,
                        H(1, 0));
      case S: return of((G(0, 2) + c) >> 1, V(0, 1),
                        (H(1, 0) + H(-1, 0) + H(-1, 2) + H(1, 2)) >> 2);
      case W: return of((G(-2, 0) + c) >> 1, (V(0, -1) + V(-2, -1) + V(-2, 1) + V(0, 1)) >> 2,
                        H(-1, 0));
      case NE: return of(G(1, -1), (V(2, -1) + V(0, -1)) >> 1, (H(1, -2) + H(1, 0)) >> 1);
      case SE: return of(G(1, 1), (V(2, 1) + V(0, 1)) >> 1, (H(1, 2) + H(1, 0)) >> 1);
      case NW: return of(G(-1, -1), (V(0, -1) + V(-2, -1)) >> 1, (H(-1, -2) + H(-1, 0)) >> 1);
      default: return of(G(-1, 1), (V(0, 1) + V(-2, 1)) >> 1, (H(-1, 2) + H(-1, 0)) >> 1);
    }
  };
  // clang-format on
  T vertical, horizontal;
  choose(c, gradient, contribution, &vertical, &horizontal);
  pPixel[v] = vertical;
  pPixel[h] = horizontal;
}

template <class T>
void redBluCenter(T* pPixel, unsigned nRowSamples, unsigned nChannel) {
  const NeighboursXY<T> p{pPixel, static_cast<ptrdiff_t>(nRowSamples)};
  const int d = static_cast<int>(nChannel), a = 2 - d;
  const auto G = [&](int dx, int dy) { return p.G(dx, dy); };
  const auto A = [&](int dx, int dy) { return p.C(a, dx, dy); };
  const auto D = [&](int dx, int dy) { return p.C(d, dx, dy); };
  const int c = A(0, 0);
  // clang-format off
  const int gradient[kDirections] = {
      absolute(A(0, -2) - c) + absolute(G(0, -1) - G(0, 1)) + halved(G(1, -2) - G(1, 0)) +
          halved(G(-1, -2) - G(-1, 0)) + halved(D(1, -1) - D(1, 1)) + halved(D(-1, -1) - D(-1, 1)),
      absolute(A(2, 0) - c) + absolute(G(1, 0) - G(-1, 0)) + halved(G(2, 1) - G(0, 1)) +
          halved(G(2, -1) - G(0, -1)) + halved(D(1, 1) - D(-1, 1)) + halved(D(1, -1) - D(-1, -1)),
      absolute(A(0, 2) - c) + absolute(G(0, 1) - G(0, -1)) + halved(G(1, 2) - G(1, 0)) +
          halved(G(-1, 2) - G(-1, 0)) + halved(D(1, 1) - D(1, -1)) + halved(D(-1, 1) - D(-1, -1)),
      absolute(A(-2, 0) - c) + absolute(G(-1, 0) - G(1, 0)) + halved(G(-2, 1) - G(0, 1)) +
          halved(G(-2, -1) - G(0, -1)) + halved(D(1, 1) - D(-1, 1)) + halved(D(-1, -1) - D(1, -1)),
      absolute(A(2, -2) - c) + absolute(D(1, -1) - D(-1, 1)) + halved(G(1, 0) - G(0, 1)) +
          halved(G(2, -1) - G(1, 0)) + halved(G(1, -2) - G(0, -1)) + halved(G(0, -1) - G(-1, 0)),
      absolute(A(2, 2) - c) + absolute(D(1, 1) - D(-1, -1)) + halved(G(1, 2) - G(0, 1)) +
          halved(G(2, 1) - G(1, 0)) + halved(G(0, 1) - G(-1, 0)) + halved(G(1, 0) - G(0, -1)),
      absolute(A(-2, -2) - c) + absolute(D(-1, -1) - D(1, 1)) + halved(G(-1, 0) - G(0, 1)) +
          halved(G(0, -1) - G(1, 0)) + halved(G(-2, -1) - G(-1, 0)) + halved(G(-1, -2) - G(0, -1)),
      absolute(A(-2, 2) - c) + absolute(D(-1, 1) - D(1, -1)) + halved(G(-1, 2) - G(0, 1)) +
          halved(G(0, 1) - G(1, 0)) + halved(G(-2, 1) - G(-1, 0)) + halved(G(-1, 0) - G(0, -1)),
  };
  // A, green and D.
  const auto contribution = [&](Direction direction) -> Contribution {
    const auto of = [](int own, int green, int diagonal) {
      return Contribution{static_cast<uint32_t>(own), static_cast<uint32_t>(green),
                          static_cast<uint32_t>(diagonal)};
    };
    switch (direction) {
      case N: return of((c + A(0, -2)) >> 1, G(0, -1), (D(1, -1) + D(-1, -1)) >> 1);
      case E: return of((A(2, 0) + c) >> 1, G(1, 0), (D(1, 1) + D(1, -1)) >> 1);
      case S: return of((A(0, 2) + c) >> 1, G(0, 1), (D(1, 1) + D(-1, 1)) >> 1);
      case W: return of((c + A(-2, 0)) >> 1, G(-1, 0), (D(-1, 1) + D(-1, -1)) >> 1);
      case NE: return of((A(2, -2) + A(0, -2) + c + A(2, 0)) >> 2,
                         (G(1, -2) + G(0, -1) + G(2, -1) + G(1, 0)) >> 2, D(1, -1));
      case SE: return of((A(2, 0) + c + A(0, 2) + A(2, 2)) >> 2,
                         (G(1, 0) + G(0, 1) + G(2, 1) + G(1, 2)) >> 2, D(1, 1));
      case NW: return of((A(0, -2) + A(-2, -2) + A(-2, 0) + c) >> 2,
                         (G(-2, -1) + G(-1, -2) + G(0, -1) + G(-1, 0)) >> 2, D(-1, -1));
      default: return of((A(-2, 0) + c + A(-2, 2) + A(0, 2)) >> 2,
                         (G(-2, 1) + G(-1, 0) + G(0, 1) + G(-1, 2)) >> 2, D(-1, 1));
    }
  };
  // clang-format on
  T green, diagonal;
  choose(c, gradient, contribution, &green, &diagonal);
  pPixel[kGreen] = green;
  pPixel[d] = diagonal;
}

template <class T>
void fill(T* work, const Region& region) {
  const unsigned rowSamples = static_cast<unsigned>(region.S);
  forEachPixel(region, work, [&](Site site, T* pixel) {
    switch (site) {
      case SITE_GR: calcOneGreenCenter(pixel, rowSamples, 2); break;
      case SITE_GB: calcOneGreenCenter(pixel, rowSamples, 0); break;
      case SITE_R: calcOneRedBluCenter(pixel, rowSamples, 0); break;
      case SITE_B: calcOneRedBluCenter(pixel, rowSamples, 2); break;
    }
  });
}

}  // namespace

void calcOneGreenCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel) {
  greenCenter(pPixel, nRowSamples, nChannel);
}
void calcOneGreenCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel) {
  greenCenter(pPixel, nRowSamples, nChannel);
}
void calcOneRedBluCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel) {
  redBluCenter(pPixel, nRowSamples, nChannel);
}
void calcOneRedBluCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel) {
  redBluCenter(pPixel, nRowSamples, nChannel);
}

REFERENCE_GUARDED(ImageColorVariableGradients, fill)

}  // namespace reference
