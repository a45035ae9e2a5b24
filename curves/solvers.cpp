#include "curves/solvers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMaxRows = 30;
constexpr double kSmallestPivot = 1e-5;

// The largest absolute value, or NaN where the row holds one: such a row is not a row of zeros.
double largestOf(const double* row, int n) {
  double largest = 0;
  for (int j = 0; j < n && !std::isnan(largest); ++j) {
    const double v = std::fabs(row[j]);
    if (!(v <= largest)) largest = v;
  }
  return largest;
}

// a(i, j) less the products a(i, k) * a(k, j), k ascending below the given end, one at a time.
double reduced(const double* pA, int n, int i, int j, int end) {
  double s = pA[i * n + j];
  for (int k = 0; k < end; ++k) s -= pA[i * n + k] * pA[k * n + j];
  return s;
}

// Reduces column j from the diagonal down; returns the row of its best scaled pivot, the last
// among equals, or j where no candidate compares.
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

// Factors and solves in place; false where the system is singular or nearly so.
bool solve(double* pA, int n, double* pB) {
  int index[kMaxRows];
  int singular;
  if (!LUDecomp(pA, n, index, &singular) || singular) return false;
  LUSolve(pA, n, index, pB);
  return true;
}

constexpr int kMaxPoints = 6;

struct Spline {
  int n;  // points
  double h[kMaxPoints - 1];
  double matrix[kMaxPoints * kMaxPoints];
  double second[kMaxPoints];  // the right side, then the second derivatives

  Spline(const double* pX, const double* pY, int points) : n(points), matrix{} {
    for (int k = 0; k < n - 1; ++k) h[k] = pX[k + 1] - pX[k];
    matrix[0] = matrix[n * n - 1] = 1;
    second[0] = second[n - 1] = 0;
    for (int k = 1; k < n - 1; ++k) {
      double* row = matrix + k * n;
      const double span = h[k - 1] + h[k];
      row[k - 1] = h[k - 1];
      row[k] = span + span;
      row[k + 1] = h[k];
      second[k] = ((pY[k + 1] - pY[k]) / h[k] - (pY[k] - pY[k - 1]) / h[k - 1]) * 6.0;
    }
  }

  int resolve(const double* pY, double* pCoef) {
    if (!solve(matrix, n, second)) return 0;
    for (int k = 0; k < n - 1; ++k, pCoef += 4) {
      const double m0 = second[k], m1 = second[k + 1], hk = h[k];
      pCoef[0] = (m1 - m0) / (hk * 6.0);
      pCoef[1] = m0 * 0.5;
      pCoef[2] = (pY[k + 1] - pY[k]) / hk + ((hk + hk) * m0 + hk * m1) / -6.0;
      pCoef[3] = pY[k];
    }
    return 1;
  }
};

// The signed determinant of what is left of a 4 by 4 matrix without row i and column j.
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

int Resolve4thOrderPolynomium(double* pX, double* pY, double* pCoef) {
  constexpr int n = 5;
  double matrix[n * n];
  double right[n];
  for (int i = 0; i < n; ++i) {
    double* row = matrix + i * n;
    const double x = pX[i], x2 = x * x, x3 = x2 * x, x4 = x3 * x;
    row[0] = x4, row[1] = x3, row[2] = x2, row[3] = x, row[4] = 1;
    right[i] = pY[i];
  }
  if (!solve(matrix, n, right)) return 0;
  std::copy_n(right, n, pCoef);
  return 1;
}

int Resolve4thOrderSpline(double* pX, double* pY, double* pCoef) {
  return Spline(pX, pY, 5).resolve(pY, pCoef);
}

int Resolve5thOrderSpline(double* pX, double* pY, double* pCoef) {
  Spline spline(pX, pY, 6);
  // quirk: spacing-two-in-row-four. A natural spline has h[3] there.
  spline.matrix[4 * spline.n + 3] = spline.h[2];
  return spline.resolve(pY, pCoef);
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
