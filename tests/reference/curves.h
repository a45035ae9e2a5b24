// The solver, the curve fits and the tone curves.
#pragma once

namespace reference {

int LUDecomp(double* pA, int n, int* pIndex, int* pSingular);
void LUSolve(double* pA, int n, int* pIndex, double* pB);
int Resolve4thOrderPolynomium(double* pX, double* pY, double* pCoef);
int Resolve4thOrderSpline(double* pX, double* pY, double* pCoef);
int Resolve5thOrderSpline(double* pX, double* pY, double* pCoef);
int Invert4x4Matrix(double* pIn, double* pOut);

void UnityLut(int nInBits, int nOutBits, unsigned short* pLut);
void ResetLut(unsigned short* pLut, int nEntries);
void NormalizePredefinedLutPoints(int nCurve, int* pX, int* pY);
void GeneratePredefinedLut(int nCurve, int nInBits, int nOutBits, unsigned short* pLut);
int GenerateGammaLut(int nGammaLow, int nGammaHigh, int nRampStart, int nRampEnd, int nInBits,
                     int nOutBits, unsigned short* pLut);

}  // namespace reference
