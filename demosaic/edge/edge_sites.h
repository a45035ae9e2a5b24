// The edge demosaic's colours of four pixels: those at nPos + 2 * l, l = 0..3, of a mosaic whose
// rows are nStride samples apart. The results of pixel l go to element 2 * l of each output,
// unclamped. A call reads two rows and two columns around its pixels. pBuf points to samples of 8
// or 16 bits.
#pragma once

namespace vistrel::core {

// At red sites, or at blue sites if bBlueRow is 1.
template <class T>
void vec_RB_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                                int bBlueRow);

// At green sites of rows with red sites, or of rows with blue sites if bBlueRow is 1. The more its
// surroundings vary, the less green is smoothed: T0 >= T1 >= T2 >= T3 are the thresholds.
template <class T>
void vec_G_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                               int& T0, int& T1, int& T2, int& T3, int bBlueRow);

}  // namespace vistrel::core
