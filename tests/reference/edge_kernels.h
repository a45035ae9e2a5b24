// The kernels of the edge demosaic: three colours for four pixels, two columns apart.
#pragma once

namespace reference {

// T: a pointer to samples, const or not. Lane l has its pixel at nPos + 2 * l and stores element 2
// * l of each output. bBlueRow: 1 in rows with blue sites.
template <class T>
void vec_RB_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                                int bBlueRow);
template <class T>
void vec_G_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                               int& T0, int& T1, int& T2, int& T3, int bBlueRow);

}  // namespace reference
