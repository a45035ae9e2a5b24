#include <cmath>

#include "tests/reference/arith.h"
#include "tests/reference/curves.h"

namespace reference {

namespace {

struct Points {
  int x[6], y[6];
};

Points pointsOf(int nCurve) {
  switch (nCurve) {
    case 2: return {{0, 12, 37, 56, 75, 100}, {0, 24, 50, 69, 87, 100}};
    case 3: return {{0, 19, 33, 48, 62, 100}, {0, 38, 51, 66, 81, 100}};
    case 4: return {{0, 6, 12, 50, 75, 100}, {0, 24, 37, 75, 87, 100}};
    case 5: return {{0, 25, 50, 65, 85, 100}, {0, 12, 37, 56, 81, 100}};
    case 6: return {{0, 8, 40, 64, 86, 100}, {0, 4, 40, 84, 98, 100}};
    default: return {{0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}};
  }
}

// k in the scale of the input.
int scaled(int k, int nInBits) {
  return static_cast<int>(shl(static_cast<uint32_t>(k), static_cast<uint32_t>(nInBits)));
}

int entriesOf(int nInBits) { return scaled(1, nInBits); }

// Entry i of curve 2..5, in the scale of the input.
int lineAt(int nCurve, int nInBits, int N, int i) {
  switch (nCurve) {
    case 2:
      if (i < (N >> 3)) return 2 * i;
      if (i < (scaled(3, nInBits) >> 2)) return i + (N >> 3);
      return (i >> 1) + (N >> 1);
    case 3:
      if (i < (scaled(3, nInBits) >> 4)) return 2 * i;
      if (i < (scaled(5, nInBits) >> 3)) return i + (scaled(3, nInBits) >> 4);
      return (i >> 1) + (N >> 1);
    case 4:
      if (i < (N >> 4)) return 4 * i;
      if (i < (N >> 3)) return 2 * i + (N >> 3);
      if (i < (N >> 1)) return i + (N >> 2);
      return (i >> 1) + (N >> 1);
    default:
      if (i < (N >> 2)) return i >> 1;
      if (i < (N >> 1)) return i - (N >> 3);
      return ((5 * i) >> 2) - (N >> 2);
  }
}

void generateSpline(int nInBits, int N, int d, unsigned short* pLut) {
  const Points points = pointsOf(6);
  double x[6], y[6], coefficients[20] = {};
  int bp[6];
  for (int k = 0; k < 6; ++k) {
    x[k] = points.x[k] / 100.0;
    y[k] = points.y[k] / 100.0;
    bp[k] = scaled(points.x[k], nInBits) / 100;
  }
  Resolve5thOrderSpline(x, y, coefficients);
  for (int k = 0; k < 5; ++k) {
    const double* const c = coefficients + 4 * k;
    for (int i = bp[k]; i < bp[k + 1]; ++i) {
      const double t = static_cast<double>(i - bp[k]) / static_cast<double>(N);
      const double v = (((t * c[0] + c[1]) * t + c[2]) * t + c[3]) * static_cast<double>(N);
      const int w = sar(trunc32(v), static_cast<uint32_t>(d));
      pLut[i] = static_cast<unsigned short>(w < 0 ? 0 : w > N - 1 ? N - 1 : w);
    }
  }
}

}  // namespace

void UnityLut(int nInBits, int nOutBits, unsigned short* pLut) {
  for (int i = 0; i < entriesOf(nInBits); ++i)
    pLut[i] = static_cast<unsigned short>(sar(i, static_cast<uint32_t>(nInBits - nOutBits)));
}

void ResetLut(unsigned short* pLut, int nEntries) {
  for (int i = 0; i < nEntries; ++i) pLut[i] = 0;
}

void NormalizePredefinedLutPoints(int nCurve, int* pX, int* pY) {
  const Points points = pointsOf(nCurve);
  for (int k = 0; k < 6; ++k) {
    pX[k] = points.x[k];
    pY[k] = points.y[k];
  }
}

void GeneratePredefinedLut(int nCurve, int nInBits, int nOutBits, unsigned short* pLut) {
  const int N = entriesOf(nInBits);
  const int d = nInBits - nOutBits;
  if (nCurve == 6) {
    generateSpline(nInBits, N, d, pLut);
    return;
  }
  if (nCurve >= 2 && nCurve <= 5)
    for (int i = 0; i < N; ++i)
      pLut[i] = static_cast<unsigned short>(lineAt(nCurve, nInBits, N, i));
  if (nInBits == 8) return;
  if (d > 0)
    for (int i = 0; i < N; ++i)
      pLut[i] = static_cast<unsigned short>(shr(pLut[i], static_cast<uint32_t>(d)));
}

int GenerateGammaLut(int nGammaLow, int nGammaHigh, int nRampStart, int nRampEnd, int nInBits,
                     int nOutBits, unsigned short* pLut) {
  const int T = entriesOf(nInBits) - 1;
  if (T < 1) return 0;
  const double gLow = nGammaLow * 0.1;
  const double gHigh = nGammaHigh * 0.1;
  for (int i = 0; i < T; ++i) {
    double x = i;
    if (i != 0) {
      double g = gHigh;
      if (i < nRampStart) {
        g = gLow;
      } else if (i < nRampEnd) {
        g = static_cast<double>(i - nRampStart) * (gHigh - gLow) /
                static_cast<double>(nRampEnd - nRampStart) +
            gLow;
      }
      if (g != 1.0) x = std::pow(x / T, 1.0 / g) * T;
    }
    pLut[i] = static_cast<unsigned short>(x < 0 ? 0 : x > T ? T : trunc32(x));
  }
  if (nInBits != nOutBits)
    for (int i = 0; i < T; ++i)
      pLut[i] =
          static_cast<unsigned short>(shr(pLut[i], static_cast<uint32_t>(nInBits - nOutBits)));
  return 0;
}

}  // namespace reference
