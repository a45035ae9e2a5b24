#include "tests/reference/edge_kernels.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace reference {

namespace {

// Orders two samples by their 16-bit patterns as signed numbers.
bool isLess(int a, int b) {
  return static_cast<int16_t>(static_cast<uint16_t>(a)) <
         static_cast<int16_t>(static_cast<uint16_t>(b));
}
int smax(int a, int b) { return isLess(a, b) ? b : a; }
int smin(int a, int b) { return isLess(a, b) ? a : b; }

int AD(int a, int b) { return smax(a, b) - smin(a, b); }

int rangeOf(std::initializer_list<int> samples) {
  int most = *samples.begin(), least = *samples.begin();
  for (int v : samples) {
    most = smax(most, v);
    least = smin(least, v);
  }
  return most - least;
}

// The pixel of a lane; P(r, c): the sample r rows down, c columns right.
template <class T>
struct Neighbourhood {
  T pixel;
  ptrdiff_t stride;
  int operator()(int r, int c) const { return pixel[r * stride + c]; }
};

template <class Samples>
void redOrBlueSite(Samples P, int* own, int* other, int* green) {
  const int C = P(0, 0), N = P(-1, 0), S = P(1, 0), W = P(0, -1), E = P(0, 1);
  const int NW = P(-1, -1), NE = P(-1, 1), SW = P(1, -1), SE = P(1, 1);
  const int N2 = P(-2, 0), S2 = P(2, 0), W2 = P(0, -2), E2 = P(0, 2);

  const int DV = AD(N, S) + AD(N2, C) + AD(C, S2) + AD(NW, SW) + AD(NE, SE);
  const int DH = AD(W, E) + AD(W2, C) + AD(E2, C) + AD(NW, NE) + AD(SW, SE);
  const int G = DV > DH ? (W + E) >> 1 : (N + S) >> 1;

  int L = 2 * AD(NW, SW) + AD(P(-2, -2), W2) + AD(N2, C) + AD(P(-2, -1), W);
  int R = 2 * AD(NW, NE) + AD(P(-1, -2), N) + AD(P(-2, -2), N2) + AD(C, W2);
  const int Gnw = L > R ? (P(-1, -2) + N) >> 1 : (P(-2, -1) + W) >> 1;

  L = 2 * AD(NE, SE) + AD(P(-2, 2), E2) + AD(N2, C) + AD(P(-2, 1), E);
  R = 2 * AD(NW, NE) + AD(N, P(-1, 2)) + AD(N2, P(-2, 2)) + AD(E2, C);
  const int Gne = L > R ? (P(-1, 2) + N) >> 1 : (P(-2, 1) + E) >> 1;

  L = 2 * AD(NW, SW) + AD(W2, P(2, -2)) + AD(C, S2) + AD(W, P(2, -1));
  R = 2 * AD(SW, SE) + AD(P(1, -2), S) + AD(P(2, -2), S2) + AD(W2, C);
  const int Gsw = L > R ? (P(1, -2) + S) >> 1 : (P(2, -1) + W) >> 1;

  L = 2 * AD(NE, SE) + AD(E2, P(2, 2)) + AD(C, S2) + AD(E, P(2, 1));
  R = 2 * AD(SW, SE) + AD(S, P(1, 2)) + AD(P(2, 2), S2) + AD(C, E2);
  const int Gse = L > R ? (P(1, 2) + S) >> 1 : (P(2, 1) + E) >> 1;

  *green = G;
  *own = C;
  *other = G + (((NW - Gnw) + (NE - Gne) + (SE - Gse) + (SW - Gsw)) >> 2);
}

struct Thresholds {
  int T0, T1, T2, T3;
};

int blend(int C, int A, int Rg, const Thresholds& t) {
  if (Rg > t.T0) return C;
  if (Rg > t.T1) return (C >> 2) + (C >> 1) + (A >> 2);
  if (Rg > t.T2) return (C >> 1) + (A >> 1);
  if (Rg > t.T3) return (A >> 1) + (A >> 2) + (C >> 2);
  return A;
}

template <class Samples>
void greenSite(Samples P, const Thresholds& t, int* beside, int* above, int* green) {
  const int C = P(0, 0), N = P(-1, 0), S = P(1, 0), W = P(0, -1), E = P(0, 1);
  const int NW = P(-1, -1), NE = P(-1, 1), SW = P(1, -1), SE = P(1, 1);
  const int N2 = P(-2, 0), S2 = P(2, 0), W2 = P(0, -2), E2 = P(0, 2);

  const int A1 = (NW + NE) >> 1, A2 = (SW + SE) >> 1;
  const int A = (2 * C + A1 + A2) >> 2;
  const int G = blend(C, A, rangeOf({C, NW, NE, SW, SE}), t);
  const int DN = AD(N, S), DW = AD(W, E);

  int L = 2 * DN + AD(N2, C) + AD(W, P(-2, -1)) + AD(E, P(-2, 1));
  int R = DW + AD(P(-1, -2), N) + AD(N, P(-1, 2)) + AD(NW, NE) + AD(P(-2, -1), P(-2, 1));
  const int Gn = L > R ? A1 : (N2 + C) >> 1;

  L = 2 * DN + AD(S2, C) + AD(W, P(2, -1)) + AD(E, P(2, 1));
  R = DW + AD(P(1, -2), S) + AD(P(1, 2), S) + AD(SW, SE) + AD(P(2, -1), P(2, 1));
  const int Gs = L > R ? A2 : (S2 + C) >> 1;

  L = DN + AD(P(-1, -2), P(1, -2)) + AD(NW, SW) + AD(W, P(-2, -1)) + AD(W, P(2, -1));
  R = 2 * DW + AD(W2, C) + AD(P(-1, -2), N) + AD(P(1, -2), S);
  const int Gw = L > R ? (W2 + C) >> 1 : (NW + SW) >> 1;

  L = DN + AD(P(-1, 2), P(1, 2)) + AD(NE, SE) + AD(E, P(-2, 1)) + AD(E, P(2, 1));
  R = 2 * DW + AD(E2, C) + AD(N, P(-1, 2)) + AD(S, P(1, 2));
  const int Ge = L > R ? (E2 + C) >> 1 : (NE + SE) >> 1;

  *green = G;
  *above = G + (((N - Gn) + (S - Gs)) >> 1);
  *beside = G + (((W - Gw) + (E - Ge)) >> 1);
}

}  // namespace

template <class T>
void vec_RB_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                                int bBlueRow) {
  for (int l = 0; l < 4; ++l) {
    const Neighbourhood<T> P = {pBuf + nPos + 2 * l, nStride};
    int* const red = pRed + 2 * l;
    int* const blue = pBlue + 2 * l;
    redOrBlueSite(P, bBlueRow == 1 ? blue : red, bBlueRow == 1 ? red : blue, pGreen + 2 * l);
  }
}

template <class T>
void vec_G_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                               int& T0, int& T1, int& T2, int& T3, int bBlueRow) {
  for (int l = 0; l < 4; ++l) {
    const Neighbourhood<T> P = {pBuf + nPos + 2 * l, nStride};
    int* const red = pRed + 2 * l;
    int* const blue = pBlue + 2 * l;
    greenSite(P, {T0, T1, T2, T3}, bBlueRow == 1 ? blue : red, bBlueRow == 1 ? red : blue,
              pGreen + 2 * l);
  }
}

#define INSTANTIATE(T)                                                                        \
  template void vec_RB_CalcGreen_3x3x4_ext<T>(T, int, int, int*, int*, int*, int);            \
  template void vec_G_CalcGreen_3x3x4_ext<T>(T, int, int, int*, int*, int*, int&, int&, int&, \
                                             int&, int);
INSTANTIATE(const uint8_t*)
INSTANTIATE(const uint16_t*)
INSTANTIATE(uint8_t*)
INSTANTIATE(uint16_t*)
#undef INSTANTIATE

}  // namespace reference
