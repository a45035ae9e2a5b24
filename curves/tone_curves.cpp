#include "vistrel/tone_curves.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "common/arith.h"
#include "vistrel/solvers.h"

namespace {

using vistrel::core::sar;
using vistrel::core::shl;
using vistrel::core::shr;
using vistrel::core::truncToInt;
using vistrel::core::wrapSub;

constexpr int kPoints = 6;
struct Points {
  int x[kPoints], y[kPoints];
};
constexpr Points kCurvePoints[] = {
    {{0, 12, 37, 56, 75, 100}, {0, 24, 50, 69, 87, 100}},  // 2
    {{0, 19, 33, 48, 62, 100}, {0, 38, 51, 66, 81, 100}},  // 3
    {{0, 6, 12, 50, 75, 100}, {0, 24, 37, 75, 87, 100}},   // 4
    {{0, 25, 50, 65, 85, 100}, {0, 12, 37, 56, 81, 100}},  // 5
    {{0, 8, 40, 64, 86, 100}, {0, 4, 40, 84, 98, 100}},    // 6
};
constexpr Points kStraightLine = {{0, 20, 40, 60, 80, 100}, {0, 20, 40, 60, 80, 100}};

// A linear piece up to `end`: ((slope * i) >> halvings) + offset. End and offset are in sixteenths
// of the table.
struct Piece {
  int end, slope, halvings, offset;
};
constexpr Piece kCurve2[] = {{2, 2, 0, 0}, {12, 1, 0, 2}, {16, 1, 1, 8}};
constexpr Piece kCurve3[] = {{3, 2, 0, 0}, {10, 1, 0, 3}, {16, 1, 1, 8}};
constexpr Piece kCurve4[] = {{1, 4, 0, 0}, {2, 2, 0, 2}, {8, 1, 0, 4}, {16, 1, 1, 8}};
constexpr Piece kCurve5[] = {{4, 1, 1, 0}, {8, 1, 0, -2}, {16, 5, 2, -4}};

std::span<const Piece> piecesOf(int nCurve) {
  switch (nCurve) {
    case 2: return kCurve2;
    case 3: return kCurve3;
    case 4: return kCurve4;
    case 5: return kCurve5;
    default: return {};
  }
}

// Not positive for 31 bits. The result has 64 bits, so that its multiples do not overflow.
int64_t tableEntries(int nInBits) { return static_cast<int32_t>(shl(1, nInBits)); }

void shiftRight(unsigned short* pLut, int64_t entries, int count) {
  for (int64_t i = 0; i < entries; ++i) pLut[i] = static_cast<uint16_t>(shr(pLut[i], count));
}

void straightPieces(std::span<const Piece> pieces, int64_t entries, unsigned short* pLut) {
  int64_t i = 0;
  for (const Piece& p : pieces)
    for (; i < p.end * entries / 16; ++i)
      pLut[i] = static_cast<uint16_t>(((p.slope * i) >> p.halvings) + p.offset * entries / 16);
}

void splineCurve(const Points& points, int64_t entries, int shift, unsigned short* pLut) {
  double x[kPoints], y[kPoints], coefficients[kPoints - 1][4];
  std::transform(points.x, points.x + kPoints, x, [](int percent) { return percent / 100.0; });
  std::transform(points.y, points.y + kPoints, y, [](int percent) { return percent / 100.0; });
  Resolve5thOrderSpline(x, y, coefficients[0]);
  const double full = static_cast<double>(entries);
  for (int k = 0; k < kPoints - 1; ++k) {
    const auto [a, b, c, d] = coefficients[k];
    const int64_t begin = points.x[k] * entries / 100, end = points.x[k + 1] * entries / 100;
    for (int64_t i = begin; i < end; ++i) {
      const double t = static_cast<double>(i - begin) / full;
      const int64_t w = sar(truncToInt((((t * a + b) * t + c) * t + d) * full), shift);
      pLut[i] = static_cast<uint16_t>(std::clamp<int64_t>(w, 0, entries - 1));
    }
  }
}

}  // namespace

void UnityLut(int nInBits, int nOutBits, unsigned short* pLut) {
  const int64_t entries = tableEntries(nInBits);
  const int shift = wrapSub(nInBits, nOutBits);
  for (int64_t i = 0; i < entries; ++i)
    pLut[i] = static_cast<uint16_t>(shr(static_cast<uint32_t>(i), shift));
}

void ResetLut(unsigned short* pLut, int nEntries) {
  for (int i = 0; i < nEntries; ++i) pLut[i] = 0;
}

void NormalizePredefinedLutPoints(int nCurve, int* pX, int* pY) {
  const Points& points = nCurve >= 2 && nCurve <= 6 ? kCurvePoints[nCurve - 2] : kStraightLine;
  std::copy_n(points.x, kPoints, pX);
  std::copy_n(points.y, kPoints, pY);
}

void GeneratePredefinedLut(int nCurve, int nInBits, int nOutBits, unsigned short* pLut) {
  const int64_t entries = tableEntries(nInBits);
  const int shift = wrapSub(nInBits, nOutBits);
  if (nCurve == 6) return splineCurve(kCurvePoints[4], entries, shift, pLut);
  straightPieces(piecesOf(nCurve), entries, pLut);
  // quirk: eight-bit-tables-unshifted. nOutBits is ignored.
  if (nInBits != 8 && shift > 0) shiftRight(pLut, entries, shift);
}

int GenerateGammaLut(int nGammaLow, int nGammaHigh, int nRampStart, int nRampEnd, int nInBits,
                     int nOutBits, unsigned short* pLut) {
  const int64_t top = static_cast<int32_t>(shl(1, nInBits) - 1);
  if (top < 1) return 1;
  const double full = static_cast<double>(top);
  const double low = nGammaLow * 0.1, high = nGammaHigh * 0.1;
  // quirk: gamma-last-entry. It stays unchanged.
  for (int32_t i = 0; i < top; ++i) {
    double x = i;
    if (i != 0) {
      double g = high;
      if (i < nRampStart)
        g = low;
      else if (i < nRampEnd)
        g = wrapSub(i, nRampStart) * (high - low) / wrapSub(nRampEnd, nRampStart) + low;
      if (g != 1.0) x = std::pow(x / full, 1.0 / g) * full;
    }
    pLut[i] = static_cast<uint16_t>(static_cast<int64_t>(std::clamp(x, 0.0, full)));
  }
  if (nInBits != nOutBits) shiftRight(pLut, top, wrapSub(nInBits, nOutBits));
  return 1;
}
