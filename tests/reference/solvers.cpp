#include <cmath>
#include <utility>

#include "tests/reference/curves.h"

namespace reference {

namespace {

// A NaN stays the largest, so that a row of them is no row of zeros.
double largestOf(const double* row, int n) {
  double largest = 0;
  for (int j = 0; j < n; ++j) {
    const double v = std::fabs(row[j]);
    if (v > largest || std::isnan(v)) largest = v;
  }
  return largest;
}

}  // namespace

int LUDecomp(double* pA, int n, int* pIndex, int* pSingular) {
  const auto a = [&](int i, int j) -> double& { return pA[i * n + j]; };
  double scale[30];
  *pSingular = 0;
  for (int i = 0; i < n; ++i) {
    const double largest = largestOf(pA + i * n, n);
    if (largest == 0.0) return 0;
    scale[i] = 1.0 / largest;
  }
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < j; ++i)
      for (int k = 0; k < i; ++k) a(i, j) = a(i, j) - a(i, k) * a(k, j);
    double big = 0;
    int imax = j;
    for (int i = j; i < n; ++i) {
      for (int k = 0; k < j; ++k) a(i, j) = a(i, j) - a(i, k) * a(k, j);
      const double f = scale[i] * std::fabs(a(i, j));
      if (f >= big) {
        big = f;
        imax = i;
      }
    }
    if (imax != j) {
      for (int k = 0; k < n; ++k) std::swap(a(imax, k), a(j, k));
      scale[imax] = scale[j];
    }
    pIndex[j] = imax;
    if (std::fabs(a(j, j)) <= 1e-5) {
      a(j, j) = 1e-5;
      *pSingular = 1;
    }
    if (j != n - 1) {
      const double r = 1.0 / a(j, j);
      for (int i = j + 1; i < n; ++i) a(i, j) = a(i, j) * r;
    }
  }
  return 1;
}

void LUSolve(double* pA, int n, int* pIndex, double* pB) {
  const auto a = [&](int i, int j) { return pA[i * n + j]; };
  int first = -1;
  for (int i = 0; i < n; ++i) {
    const int p = pIndex[i];
    double s = pB[p];
    pB[p] = pB[i];
    if (first >= 0) {
      for (int j = first; j < i; ++j) s = s - a(i, j) * pB[j];
    } else if (s != 0.0) {
      first = i;
    }
    pB[i] = s;
  }
  for (int i = n - 1; i >= 0; --i) {
    double s = pB[i];
    for (int j = i + 1; j < n; ++j) s = s - a(i, j) * pB[j];
    pB[i] = s / a(i, i);
  }
}

int Resolve4thOrderPolynomium(double* pX, double* pY, double* pCoef) {
  double matrix[25];
  double right[5];
  for (int i = 0; i < 5; ++i) {
    const double x = pX[i], x2 = x * x, x3 = x2 * x, x4 = x3 * x;
    const double row[5] = {x4, x3, x2, x, 1.0};
    for (int j = 0; j < 5; ++j) matrix[i * 5 + j] = row[j];
    right[i] = pY[i];
  }
  int index[5];
  int singular;
  if (LUDecomp(matrix, 5, index, &singular) == 0 || singular != 0) return 0;
  LUSolve(matrix, 5, index, right);
  for (int i = 0; i < 5; ++i) pCoef[i] = right[i];
  return 1;
}

namespace {

// The spline through n points, at most six. `departure`: in matrix row 4 the element at column 3
// is h[2] in place of h[3].
int resolveSpline(int n, bool departure, const double* x, const double* y, double* pCoef) {
  const int m = n - 1;
  double h[5];
  for (int k = 0; k < m; ++k) h[k] = x[k + 1] - x[k];

  double matrix[36] = {};
  double M[6] = {};
  matrix[0] = 1;
  matrix[n * n - 1] = 1;
  for (int k = 1; k < m; ++k) {
    const double sum = h[k - 1] + h[k];
    matrix[k * n + k - 1] = h[k - 1];
    matrix[k * n + k] = sum + sum;
    matrix[k * n + k + 1] = h[k];
    M[k] = ((y[k + 1] - y[k]) / h[k] - (y[k] - y[k - 1]) / h[k - 1]) * 6.0;
  }
  if (departure) matrix[4 * n + 3] = h[2];

  int index[6];
  int singular;
  if (LUDecomp(matrix, n, index, &singular) == 0 || singular != 0) return 0;
  LUSolve(matrix, n, index, M);
  for (int k = 0; k < m; ++k) {
    const double M0 = M[k], M1 = M[k + 1], hk = h[k];
    pCoef[4 * k + 0] = (M1 - M0) / (hk * 6.0);
    pCoef[4 * k + 1] = M0 * 0.5;
    pCoef[4 * k + 2] = (y[k + 1] - y[k]) / hk + ((hk + hk) * M0 + hk * M1) / -6.0;
    pCoef[4 * k + 3] = y[k];
  }
  return 1;
}

}  // namespace

int Resolve4thOrderSpline(double* pX, double* pY, double* pCoef) {
  return resolveSpline(5, false, pX, pY, pCoef);
}

int Resolve5thOrderSpline(double* pX, double* pY, double* pCoef) {
  return resolveSpline(6, true, pX, pY, pCoef);
}

namespace {

// (-1)^(i + j) times the determinant of m without row i and column j.
double cofactor(const double* m, int i, int j) {
  double minor[9];
  int k = 0;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (r != i && c != j) minor[k++] = m[4 * r + c];
  const double determinant = minor[0] * (minor[4] * minor[8] - minor[5] * minor[7]) -
                             minor[1] * (minor[3] * minor[8] - minor[5] * minor[6]) +
                             minor[2] * (minor[3] * minor[7] - minor[4] * minor[6]);
  return (i + j) % 2 == 0 ? determinant : -determinant;
}

}  // namespace

int Invert4x4Matrix(double* pIn, double* pOut) {
  double C[4][4];
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) C[i][j] = cofactor(pIn, i, j);
  const double det = pIn[0] * C[0][0] + pIn[1] * C[0][1] + pIn[2] * C[0][2] + pIn[3] * C[0][3];
  if (det == 0.0) return 0;
  const double r = 1.0 / det;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) pOut[4 * j + i] = C[i][j] * r;
  return 1;
}

}  // namespace reference
