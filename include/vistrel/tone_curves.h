// Tone curves as tables of 16-bit words: index = input value, entry = output value.
// A table for nInBits has 1 << nInBits entries, and the caller owns it.
#pragma once

// A straight line: pLut[i] = i >> (nInBits - nOutBits).
void UnityLut(int nInBits, int nOutBits, unsigned short* pLut);

// Zero in nEntries words.
void ResetLut(unsigned short* pLut, int nEntries);

// The six points, in percent, that stand for curve 2..6 in an editor; for other
// numbers the straight line.
void NormalizePredefinedLutPoints(int nCurve, int* pX, int* pY);

// Curve 2..6. With 8 input bits curves 2 to 5 always come out in 8-bit scale. For
// other numbers no entry is computed, and entries that the caller has are shifted.
void GeneratePredefinedLut(int nCurve, int nInBits, int nOutBits, unsigned short* pLut);

// A gamma of nGammaLow / 10 up to nRampStart, moving linearly to nGammaHigh / 10 at
// nRampEnd. The last entry is not written. The result has no meaning.
int GenerateGammaLut(int nGammaLow, int nGammaHigh, int nRampStart, int nRampEnd, int nInBits,
                     int nOutBits, unsigned short* pLut);
