// Fits a polynomial and splines through a few points.
#include <algorithm>

#include "vistrel/solvers.h"

namespace {

constexpr int kMaxPoints = 6;

// Factors and solves in place. Returns false if the system is singular or nearly so.
bool solve(double* pA, int n, double* pB) {
  int index[kMaxPoints];
  int singular;
  if (!LUDecomp(pA, n, index, &singular) || singular) return false;
  LUSolve(pA, n, index, pB);
  return true;
}

struct Spline {
  int n;  // points
  double h[kMaxPoints - 1];
  double matrix[kMaxPoints * kMaxPoints];
  double second[kMaxPoints];  // the right-hand side, then the second derivatives

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

}  // namespace

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
