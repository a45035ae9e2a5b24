// The edge demosaic's colours of four pixels: lanes l = 0..3 at nPos + 2 * l of a mosaic with rows
// nStride samples apart. Lane l's results go to element 2 * l of each output, unclamped. A call
// reads two rows and two columns around its pixels. pBuf points to samples of 8 or 16 bits.
#pragma once

namespace vistrel::core {

// At red sites, or where bBlueRow is 1 at blue ones.
template <class T>
void vec_RB_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                                int bBlueRow);

// At green sites beside red ones, or where bBlueRow is 1 beside blue ones. Green is smoothed the
// less, the more its surroundings vary: T0 >= T1 >= T2 >= T3 are the steps.
template <class T>
void vec_G_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                               int& T0, int& T1, int& T2, int& T3, int bBlueRow);

}  // namespace vistrel::core
