#include <cmath>
#include <initializer_list>

#include "tests/reference/guarded.h"

namespace reference {

namespace {

constexpr double half = 0.5;
constexpr double qDiag = 0.3535533845424652;

double square(double v) { return v * v; }

template <class T>
T stored(double v) {
  return static_cast<T>(clamp(trunc32(v), 0, kLimit<T>));
}

// The neighbours as doubles.
template <class T>
struct Wide {
  NeighboursRC<T> n;
  double C(int channel, int r, int c) const { return n.C(channel, r, c); }
  double G(int r, int c) const { return n.G(r, c); }
  double H(int channel, int r, int c) const {  // the hue ratio there
    return n.G(r, c) != 0 ? C(channel, r, c) / G(r, c) : 0.0;
  }
};

template <class T>
void fillGreen(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (isGreen(site)) return;
    const Wide<T> n{{pixel, region.S}};
    const int K = site == SITE_R ? kRed : kBlue;
    const double dV2 = square((n.G(-1, 0) - n.G(1, 0)) * half) + 1.0;
    const double dH2 = square((n.G(0, -1) - n.G(0, 1)) * half) + 1.0;
    const double C = n.C(K, 0, 0);
    const double wE = 1 / std::sqrt(square((C - n.C(K, 0, 2)) * half) + dH2);
    const double wW = 1 / std::sqrt(square((C - n.C(K, 0, -2)) * half) + dH2);
    const double wN = 1 / std::sqrt(square((C - n.C(K, -2, 0)) * half) + dV2);
    const double wS = 1 / std::sqrt(square((C - n.C(K, 2, 0)) * half) + dV2);
    pixel[kGreen] =
        stored<T>((wS * n.G(1, 0) + (wN * n.G(-1, 0) + (wW * n.G(0, -1) + wE * n.G(0, 1)))) /
                  (((wW + wE) + wN) + wS));
  });
}

template <class T>
void fillOpposite(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (isGreen(site)) return;
    const Wide<T> n{{pixel, region.S}};
    const int K = site == SITE_R ? kRed : kBlue;
    const int V = site == SITE_R ? kBlue : kRed;
    const double dA2 = square((n.C(V, -1, 1) - n.C(V, 1, -1)) * qDiag) + 1.0;
    const double dB2 = square((n.C(V, -1, -1) - n.C(V, 1, 1)) * qDiag) + 1.0;
    const double C = n.C(K, 0, 0);
    const double wNW = 1 / std::sqrt(square((n.C(K, -2, -2) - C) * qDiag) + dB2);
    const double wSW = 1 / std::sqrt(square((n.C(K, 2, -2) - C) * qDiag) + dA2);
    const double wNE = 1 / std::sqrt(square((n.C(K, -2, 2) - C) * qDiag) + dA2);
    const double wSE = 1 / std::sqrt(square((n.C(K, 2, 2) - C) * qDiag) + dB2);
    double A = n.H(V, 1, -1) * wSW + n.H(V, -1, 1) * wNE;
    A = n.H(V, -1, -1) * wNW + A;
    A = n.H(V, 1, 1) * wSE + A;
    pixel[V] = stored<T>((n.G(0, 0) * A) / (((wSW + wNE) + wNW) + wSE));
  });
}

template <class T>
void fillAtGreen(T* work, const Region& region) {
  forEachPixel(region, work, [&](Site site, T* pixel) {
    if (!isGreen(site)) return;
    const Wide<T> n{{pixel, region.S}};
    const double G0 = n.G(0, 0);
    for (int X : {kRed, kBlue}) {
      const double dXh2 = square((n.C(X, 0, -1) - n.C(X, 0, 1)) * half) + 1.0;
      const double dXv2 = square((n.C(X, -1, 0) - n.C(X, 1, 0)) * half) + 1.0;
      const double wE = 1 / std::sqrt(square((G0 - n.G(0, 1)) * half) + dXh2);
      const double wW = 1 / std::sqrt(square((G0 - n.G(0, -1)) * half) + dXh2);
      const double wN = 1 / std::sqrt(square((G0 - n.G(-1, 0)) * half) + dXv2);
      const double wS = 1 / std::sqrt(square((G0 - n.G(1, 0)) * half) + dXv2);
      double A = n.H(X, 0, -1) * wW + n.H(X, 0, 1) * wE;
      A = n.H(X, -1, 0) * wN + A;
      A = n.H(X, 1, 0) * wS + A;
      pixel[X] = stored<T>((A * G0) / (((wW + wE) + wN) + wS));
    }
  });
}

template <class T>
void fill(T* work, const Region& region) {
  fillGreen(work, region);
  fillOpposite(work, region);
  fillAtGreen(work, region);
}

REFERENCE_GUARDED(doublePrecision, fill)

}  // namespace

#if defined(__SSE__)
int32_t g_bIsSSE = 1;
#else
int32_t g_bIsSSE = 0;
#endif

int32_t OS_IsSSE() { return g_bIsSSE; }

void ImageColorHueKimmel(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                         uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                         uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {
  if (OS_IsSSE() != 0)
    vec_ImageColorHueKimmel(nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY, nRoiWidth,
                            nRoiHeight, pSrc, pDst);
  else
    doublePrecision(nIndex, nImgWidth, nBayer, nBinning, nFormat, nRoiX, nRoiY, nRoiWidth,
                    nRoiHeight, pSrc, pDst);
}

void ImageColorHueKimmel(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                         uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,
                         uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                         uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits) {
  if (OS_IsSSE() != 0)
    vec_ImageColorHueKimmel(nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX, nRoiY,
                            nRoiWidth, nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
  else
    doublePrecision(nIndex, nImgWidth, nBayer, nBinning, nFormat, nLutMode, nRoiX, nRoiY, nRoiWidth,
                    nRoiHeight, pSrc, pDst, nDstBits, nSrcBits);
}

}  // namespace reference
