// Tone curves as tables of 16-bit values: the index is the input value, the entry is
// the output value. A table for nInBits has 1 << nInBits entries; the caller owns it.
#pragma once

// A straight line: pLut[i] = i >> (nInBits - nOutBits).
void UnityLut(int nInBits, int nOutBits, unsigned short* pLut);

// Sets nEntries entries to zero.
void ResetLut(unsigned short* pLut, int nEntries);

// The six points, in percent, that represent curve 2..6 in an editor. For other
// numbers they lie on a straight line.
void NormalizePredefinedLutPoints(int nCurve, int* pX, int* pY);

// Computes curve 2..6. With 8 input bits, curves 2 to 5 always have 8-bit results.
// For other numbers no entry is computed, and the entries already in pLut are shifted.
void GeneratePredefinedLut(int nCurve, int nInBits, int nOutBits, unsigned short* pLut);

// Computes a gamma of nGammaLow / 10 up to nRampStart, which then changes linearly to
// nGammaHigh / 10 at nRampEnd. The last entry is not written. The returned value has
// no meaning.
int GenerateGammaLut(int nGammaLow, int nGammaHigh, int nRampStart, int nRampEnd, int nInBits,
                     int nOutBits, unsigned short* pLut);
