// A small dense solver and the curve fits built on it, in double precision.
// Matrices are arrays in row order: element (i, j) of an n by n one at i * n + j.
#pragma once

// Crout's LU decomposition with implicit row scaling, in place. n is at most 30.
// pIndex receives n row numbers. *pSingular becomes 1 when a pivot of at most
// 1e-5 was replaced by 1e-5, else 0. Returns 1, or 0 for a row of zeros.
int LUDecomp(double* pA, int n, int* pIndex, int* pSingular);

// Solves with the factors of LUDecomp. pB: the right side, then the solution.
void LUSolve(double* pA, int n, int* pIndex, double* pB);

// The polynomial through five points: pCoef receives five coefficients, highest
// power first. Returns 1, or 0 for a singular system, with pCoef untouched.
int Resolve4thOrderPolynomium(double* pX, double* pY, double* pCoef);

// The natural cubic spline through five points: four segments of a, b, c, d, with
// y = ((a * t + b) * t + c) * t + d and t counted from the segment's first x.
// Returns 1, or 0 for a singular system.
int Resolve4thOrderSpline(double* pX, double* pY, double* pCoef);

// A cubic spline through six points, five segments. It departs from the natural
// spline in one matrix element; on equally spaced points the two are the same.
int Resolve5thOrderSpline(double* pX, double* pY, double* pCoef);

// The inverse of a 4 by 4 matrix by cofactors; pOut may be pIn. Returns 1, or 0
// when the determinant is exactly zero, with pOut untouched.
int Invert4x4Matrix(double* pIn, double* pOut);
