#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "tests/reference/guarded.h"

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace reference {

#if defined(__SSE__)
float VectorReciprocalRoot(float x) { return _mm_cvtss_f32(_mm_rsqrt_ps(_mm_set1_ps(x))); }
#else
float VectorReciprocalRoot(float x) { return 1.0f / std::sqrt(x); }
#endif

float (*g_pReciprocalRoot)(float) = VectorReciprocalRoot;

namespace {

constexpr float half = 0.5f;
constexpr float qDiag = 0.35355338f;

float square(float v) { return v * v; }
float root(float v) { return g_pReciprocalRoot(v); }

// A pixel of the walk. Columns in whole blocks of eight differ from the columns of the tail.
template <class T>
struct Spot {
  T* pixel;
  ptrdiff_t S;
  bool block;

  float C(int channel, int r, int c) const { return pixel[r * S + 3 * c + channel]; }
  float G(int r, int c) const { return C(kGreen, r, c); }

  float boundedHue(int channel, int r, int c) const {
    const float g = G(r, c);
    return std::min(C(channel, r, c) / std::max(g, 1.0f), g);
  }
  float plainHue(int channel, int r, int c) const {
    return G(r, c) != 0 ? C(channel, r, c) / G(r, c) : 0.0f;
  }

  void store(int channel, float v) const {
    constexpr float bound = kLimit<T>;
    const int x = block ? trunc32(std::min(std::max(v, 0.0f), bound)) : trunc32(v);
    pixel[channel] = static_cast<T>(clamp(x, 0, kLimit<T>));
  }
};

template <class T>
void fillGreen(const Spot<T>& n, int K) {
  const float dV2 = square((n.G(-1, 0) - n.G(1, 0)) * half) + 1.0f;
  const float dH2 = square((n.G(0, -1) - n.G(0, 1)) * half) + 1.0f;
  const float C = n.C(K, 0, 0);
  const float wE = root(square((C - n.C(K, 0, 2)) * half) + dH2);
  const float wW = root(square((C - n.C(K, 0, -2)) * half) + dH2);
  const float wN = root(square((C - n.C(K, -2, 0)) * half) + dV2);
  const float wS = root(square((C - n.C(K, 2, 0)) * half) + dV2);
  n.store(kGreen, (wS * n.G(1, 0) + (wN * n.G(-1, 0) + (wW * n.G(0, -1) + wE * n.G(0, 1)))) /
                      (((wW + wE) + wN) + wS));
}

// Only here the tail's hue is not bounded.
template <class T>
void fillOpposite(const Spot<T>& n, int K) {
  const int V = 2 - K;
  const auto H = [&](int r, int c) {
    return n.block ? n.boundedHue(V, r, c) : n.plainHue(V, r, c);
  };
  const float dA2 = square((n.C(V, -1, 1) - n.C(V, 1, -1)) * qDiag) + 1.0f;
  const float dB2 = square((n.C(V, -1, -1) - n.C(V, 1, 1)) * qDiag) + 1.0f;
  const float C = n.C(K, 0, 0);
  const float wNW = root(square((n.C(K, -2, -2) - C) * qDiag) + dB2);
  const float wSW = root(square((n.C(K, 2, -2) - C) * qDiag) + dA2);
  const float wNE = root(square((n.C(K, -2, 2) - C) * qDiag) + dA2);
  const float wSE = root(square((n.C(K, 2, 2) - C) * qDiag) + dB2);
  float A = H(1, -1) * wSW + H(-1, 1) * wNE;
  A = H(-1, -1) * wNW + A;
  A = H(1, 1) * wSE + A;
  n.store(V, (n.G(0, 0) * A) / (((wSW + wNE) + wNW) + wSE));
}

template <class T>
void fillAtGreen(const Spot<T>& n) {
  const float G0 = n.G(0, 0);
  for (int X : {kRed, kBlue}) {
    const float dXh2 = square((n.C(X, 0, -1) - n.C(X, 0, 1)) * half) + 1.0f;
    const float dXv2 = square((n.C(X, -1, 0) - n.C(X, 1, 0)) * half) + 1.0f;
    const float wE = root(square((G0 - n.G(0, 1)) * half) + dXh2);
    const float wW = root(square((G0 - n.G(0, -1)) * half) + dXh2);
    const float wN = root(square((G0 - n.G(-1, 0)) * half) + dXv2);
    const float wS = root(square((G0 - n.G(1, 0)) * half) + dXv2);
    float A = n.boundedHue(X, 0, -1) * wW + n.boundedHue(X, 0, 1) * wE;
    A = n.boundedHue(X, -1, 0) * wN + A;
    A = n.boundedHue(X, 1, 0) * wS + A;
    n.store(X, (A * G0) / (((wW + wE) + wN) + wS));
  }
}

// The walk covers nRoiHeight rows of nRoiWidth pixels at the pitch of an unbinned buffer, whatever
// the binning is; only neighbours are found with the true row stride. Block columns take their
// parity from the end of the row, and for 16-bit samples without the column bit of the phase.
template <class T, class Visit>
void walk(T* work, const Region& a, Visit visit) {
  const uint32_t blockStart = a.nRoiX + a.nRoiWidth + (sizeof(T) == 1 ? a.nBayer >> 1 : 0);
  const uint32_t tailStart = a.nRoiX + (a.nBayer >> 1);
  const ptrdiff_t pitch = 3 * static_cast<ptrdiff_t>(a.nRoiWidth) + 12;
  for (uint32_t k = 0; k < a.nRoiHeight; ++k) {
    const uint32_t r = (a.nBayer + a.nRoiY + k) & 1;
    const int K = r == 0 ? kRed : kBlue;  // the colour that this row senses besides green
    T* const row = work + 2 * a.S + 6 + k * pitch;
    for (uint32_t i = 0; i < a.nRoiWidth; ++i) {
      const bool block = i < (a.nRoiWidth & ~7U);
      const uint32_t c = ((block ? blockStart : tailStart) + i) & 1;
      visit(Spot<T>{row + 3 * static_cast<ptrdiff_t>(i), a.S, block}, r == c, K);
    }
  }
}

template <class T>
void fill(T* work, const Region& region) {
  walk(work, region, [](const Spot<T>& n, bool green, int K) {
    if (!green) fillGreen(n, K);
  });
  walk(work, region, [](const Spot<T>& n, bool green, int K) {
    if (!green) fillOpposite(n, K);
  });
  walk(work, region, [](const Spot<T>& n, bool green, int) {
    if (green) fillAtGreen(n);
  });
}

}  // namespace

REFERENCE_GUARDED(vec_ImageColorHueKimmel, fill)

}  // namespace reference
