#include <algorithm>
#include <cstdlib>

#include "tests/reference/guarded.h"

namespace reference {

namespace {

template <class T>
int greenOf(const T* pPixel, unsigned nStride, unsigned nMode) {
  const NeighboursRC<T> n{pPixel, static_cast<ptrdiff_t>(nStride)};
  const auto G = [&](int r, int c) { return n.G(r, c); };
  const auto K = [&](int r, int c) { return n.C(static_cast<int>(nMode), r, c); };
  const int dV = std::abs(G(-1, 0) - G(1, 0));
  const int dH = std::abs(G(0, -1) - G(0, 1));
  const int dN = dV + 2 * std::abs(K(-2, 0) - K(0, 0));
  const int dE = dH + 2 * std::abs(K(0, 0) - K(0, 2));
  const int dS = dV + 2 * std::abs(K(0, 0) - K(2, 0));
  const int dW = dH + 2 * std::abs(K(0, -2) - K(0, 0));
  const int m = std::min({dN, dE, dS, dW, 65535});
  int v;
  if (dN <= m)
    v = 3 * G(-1, 0) + G(1, 0) + K(0, 0) - K(-2, 0);
  else if (dE <= m)
    v = 3 * G(0, 1) + G(0, -1) + K(0, 0) - K(0, 2);
  else if (dS > m)  // south and west are exchanged
    v = 3 * G(1, 0) + G(-1, 0) + K(0, 0) - K(2, 0);
  else
    v = 3 * G(0, -1) + G(0, 1) + K(0, 0) - K(0, -2);
  return v >> 2;
}

// Red in `first`, blue in `second`, clamped to 0 .. limit.
template <class T>
void redBluOf(const T* pPixel, unsigned nStride, T* first, T* second, unsigned nMode, int limit) {
  const NeighboursRC<T> n{pPixel, static_cast<ptrdiff_t>(nStride)};
  const int G0 = n.G(0, 0);
  const auto along = [&](int X, int r, int c) {  // between (-r, -c) and (r, c)
    return HueTransit(n.G(-r, -c), G0, n.G(r, c), n.C(X, -r, -c), n.C(X, r, c));
  };
  int red = 0, blue = 0;
  if (nMode == 3) {  // SITE_GR
    red = along(kRed, 0, 1);
    blue = along(kBlue, 1, 0);
  } else if (nMode == 1) {  // SITE_GB
    red = along(kRed, 1, 0);
    blue = along(kBlue, 0, 1);
  } else {
    const auto K = [&](int r, int c) { return n.C(nMode == 2 ? kRed : kBlue, r, c); };
    const int other = nMode == 2 ? kBlue : kRed;
    const auto V = [&](int r, int c) { return n.C(other, r, c); };
    const int D1 = std::abs(K(-2, 2) - K(0, 0)) + std::abs(K(0, 0) - K(2, -2)) +
                   std::abs(G0 - n.G(1, -1)) + std::abs(G0 - n.G(-1, 1)) +
                   std::abs(V(-1, 1) - V(1, -1));
    const int D2 = std::abs(K(-2, -2) - K(0, 0)) + std::abs(K(0, 0) - K(2, 2)) +
                   std::abs(G0 - n.G(1, 1)) + std::abs(G0 - n.G(-1, -1)) +
                   std::abs(V(-1, -1) - V(1, 1));
    const int t = D1 > D2 ? along(other, 1, 1) : along(other, 1, -1);
    (nMode == 2 ? blue : red) = t;
  }
  *first = static_cast<T>(clamp(red, 0, limit));
  *second = static_cast<T>(clamp(blue, 0, limit));
}

void redBlu(uint8_t* pixel, unsigned S, uint8_t* first, uint8_t* second, unsigned nMode) {
  calcOneRedBlu8(pixel, S, first, second, nMode);
}
void redBlu(uint16_t* pixel, unsigned S, uint16_t* first, uint16_t* second, unsigned nMode) {
  calcOneRedBlu16(pixel, S, first, second, nMode);
}

template <class T>
void fill(T* work, const Region& region) {
  const unsigned S = static_cast<unsigned>(region.S);
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (site == SITE_B) pixel[kGreen] = calcOneGreen(pixel, S, 0);
    if (site == SITE_R) pixel[kGreen] = calcOneGreen(pixel, S, 2);
  });
  forEachPixel(region, work, [&](Site site, T* pixel) {
    T red, blue;
    switch (site) {
      case SITE_GB:
        redBlu(pixel, S, &red, &blue, 1);
        pixel[kBlue] = blue;
        pixel[kRed] = red;
        break;
      case SITE_B:
        redBlu(pixel, S, &red, &blue, 0);
        pixel[kRed] = red;
        break;
      case SITE_R:
        redBlu(pixel, S, &red, &blue, 2);
        pixel[kBlue] = blue;
        break;
      case SITE_GR:
        redBlu(pixel, S, &red, &blue, 3);
        pixel[kBlue] = blue;
        pixel[kRed] = red;
        break;
    }
  });
}

}  // namespace

// 256 passes the limit, and a byte stores it as 0.
uint8_t calcOneGreen(uint8_t* pPixel, unsigned nStride, unsigned nMode) {
  return static_cast<uint8_t>(clamp(greenOf(pPixel, nStride, nMode), 0, 256));
}

uint16_t calcOneGreen(uint16_t* pPixel, unsigned nStride, unsigned nMode) {
  return static_cast<uint16_t>(clamp(greenOf(pPixel, nStride, nMode), 0, 1023));
}

void calcOneRedBlu8(uint8_t* pPixel, unsigned nStride, uint8_t* pFirst, uint8_t* pSecond,
                    unsigned nMode) {
  redBluOf(pPixel, nStride, pFirst, pSecond, nMode, 255);
}

void calcOneRedBlu16(uint16_t* pPixel, unsigned nStride, uint16_t* pFirst, uint16_t* pSecond,
                     unsigned nMode) {
  redBluOf(pPixel, nStride, pFirst, pSecond, nMode, 1023);
}

int HueTransit(int L1, int L2, int L3, int V1, int V3) {
  if ((L2 <= L1 && L2 <= L3) || (L2 >= L1 && L2 >= L3))
    return trunc32((2 * L2 - (L1 + L3)) * 0.25 + (V1 + V3) * 0.5);
  const uint32_t product = static_cast<uint32_t>(V3 - V1) * static_cast<uint32_t>(L2 - L1);
  return V1 + static_cast<int32_t>(product) / (L3 - L1);
}

REFERENCE_GUARDED(ImageColorPixelGrouping, fill)

}  // namespace reference
