// A small dense solver and curve fits based on it, in double precision.
// Matrices are stored row by row: element (i, j) of an n by n matrix is at i * n + j.
#pragma once

// Crout's LU decomposition with implicit row scaling, in place. n is at most 30.
// pIndex receives n row numbers. *pSingular becomes 1 if a pivot of at most 1e-5
// was replaced by 1e-5, else 0. Returns 1 on success, 0 if a row is all zeros.
int LUDecomp(double* pA, int n, int* pIndex, int* pSingular);

// Solves with the factors of LUDecomp. pB holds the right-hand side and receives
// the solution.
void LUSolve(double* pA, int n, int* pIndex, double* pB);

// The polynomial through five points: pCoef receives five coefficients, highest
// power first. Returns 1 on success, 0 if the system is singular; pCoef then stays
// unchanged.
int Resolve4thOrderPolynomium(double* pX, double* pY, double* pCoef);

// The natural cubic spline through five points. Each of its four segments has four
// coefficients a, b, c, d: y = ((a * t + b) * t + c) * t + d, where t is the distance
// from the segment's first x. Returns 1 on success, 0 if the system is singular.
int Resolve4thOrderSpline(double* pX, double* pY, double* pCoef);

// A cubic spline of five segments through six points. It differs from the natural
// spline in one matrix element; for equally spaced points both are the same.
int Resolve5thOrderSpline(double* pX, double* pY, double* pCoef);

// The inverse of a 4 by 4 matrix by cofactors; pOut may be pIn. Returns 1 on success,
// 0 if the determinant is exactly zero; pOut then stays unchanged.
int Invert4x4Matrix(double* pIn, double* pOut);
