#include "vistrel/solvers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMaxRows = 30;
constexpr double kSmallestPivot = 1e-5;

// The largest absolute value of a row; NaN if the row has one, so that it does not count as all
// zeros.
double largestOf(const double* row, int n) {
  double largest = 0;
  for (int j = 0; j < n && !std::isnan(largest); ++j) {
    const double v = std::fabs(row[j]);
    if (!(v <= largest)) largest = v;
  }
  return largest;
}

// Subtracts the products a(i, k) * a(k, j) from a(i, j), one at a time, for k = 0 .. end - 1.
double reduced(const double* pA, int n, int i, int j, int end) {
  double s = pA[i * n + j];
  for (int k = 0; k < end; ++k) s -= pA[i * n + k] * pA[k * n + j];
  return s;
}

// Reduces column j from the diagonal down. Returns the row of the best scaled pivot: the last one
// if several are equal, j if every candidate is NaN.
int reduceAndFindPivot(double* pA, int n, int j, const double* scale) {
  double big = 0;
  int imax = j;
  for (int i = j; i < n; ++i) {
    pA[i * n + j] = reduced(pA, n, i, j, j);
    const double f = scale[i] * std::fabs(pA[i * n + j]);
    if (f >= big) {
      big = f;
      imax = i;
    }
  }
  return imax;
}

// The signed determinant of a 4 by 4 matrix without its row i and column j.
double cofactor(const double* m, int i, int j) {
  double s[9];
  double* out = s;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (r != i && c != j) *out++ = m[4 * r + c];
  const double minor = s[0] * (s[4] * s[8] - s[5] * s[7]) - s[1] * (s[3] * s[8] - s[5] * s[6]) +
                       s[2] * (s[3] * s[7] - s[4] * s[6]);
  return (i + j) % 2 ? -minor : minor;
}

}  // namespace

int LUDecomp(double* pA, int n, int* pIndex, int* pSingular) {
  double scale[kMaxRows];
  *pSingular = 0;
  for (int i = 0; i < n; ++i) {
    const double largest = largestOf(pA + i * n, n);
    if (largest == 0.0) return 0;
    scale[i] = 1.0 / largest;
  }
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < j; ++i) pA[i * n + j] = reduced(pA, n, i, j, i);
    const int imax = reduceAndFindPivot(pA, n, j, scale);
    if (imax != j) {
      std::swap_ranges(pA + imax * n, pA + imax * n + n, pA + j * n);
      scale[imax] = scale[j];
    }
    pIndex[j] = imax;
    double& pivot = pA[j * n + j];
    if (std::fabs(pivot) <= kSmallestPivot) {
      pivot = kSmallestPivot;
      *pSingular = 1;
    }
    const double reciprocal = 1.0 / pivot;
    for (int i = j + 1; i < n; ++i) pA[i * n + j] *= reciprocal;
  }
  return 1;
}

void LUSolve(double* pA, int n, int* pIndex, double* pB) {
  int first = -1;
  for (int i = 0; i < n; ++i) {
    const int p = pIndex[i];
    double s = pB[p];
    pB[p] = pB[i];
    if (first >= 0) {
      for (int j = first; j < i; ++j) s -= pA[i * n + j] * pB[j];
    } else if (s != 0.0) {
      first = i;
    }
    pB[i] = s;
  }
  for (int i = n - 1; i >= 0; --i) {
    double s = pB[i];
    for (int j = i + 1; j < n; ++j) s -= pA[i * n + j] * pB[j];
    pB[i] = s / pA[i * n + i];
  }
}

int Invert4x4Matrix(double* pIn, double* pOut) {
  double cofactors[16];
  for (int i = 0; i < 16; ++i) cofactors[i] = cofactor(pIn, i / 4, i % 4);
  const double det =
      pIn[0] * cofactors[0] + pIn[1] * cofactors[1] + pIn[2] * cofactors[2] + pIn[3] * cofactors[3];
  if (det == 0.0) return 0;
  const double r = 1.0 / det;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) pOut[4 * j + i] = cofactors[4 * i + j] * r;
  return 1;
}
