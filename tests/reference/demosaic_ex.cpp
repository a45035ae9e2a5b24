#include <algorithm>
#include <vector>

#include "tests/reference/edge_kernels.h"
#include "tests/reference/guarded.h"

namespace reference {

namespace {

struct Thresholds {
  int T0, T1, T2, T3;
};

// The frame in rows of Wf + 4 samples, with columns of zeros on both sides and row pairs repeated
// above and below. Rows past its end are zero, and so are the missing rows of a frame of one row.
template <class T>
std::vector<T> mosaicCopyOf(const T* pSrc, uint32_t nImgWidth, const Region& a, int rows) {
  const size_t Sm = size_t{a.Wf} + 4;
  const int Hf = static_cast<int>(a.Hf);
  std::vector<T> copy(static_cast<size_t>(std::max(rows, Hf + 8)) * Sm, 0);
  const auto copyRow = [&](int frameRow, int row) {
    if (frameRow < 0 || frameRow >= Hf) return;
    for (size_t i = 0; i < a.Wf; ++i)
      copy[static_cast<size_t>(row) * Sm + 2 + i] =
          pSrc[static_cast<size_t>(frameRow) * nImgWidth + a.x0 + i];
  };
  copyRow(0, 2);
  copyRow(1, 3);
  for (int j = 0; j < Hf; ++j) copyRow(j, j + 4);
  copyRow(Hf - 2, Hf + 4);
  copyRow(Hf - 1, Hf + 5);
  return copy;
}

// The colours of a block's row of eight pixels.
struct BlockRow {
  int blue[8], green[8], red[8];
};

// Four pixels of a row: green sites if r = c, otherwise red and blue ones.
template <class T>
void runKernel(const T* copy, int position, int Sm, Thresholds t, int r, int c, int k,
               BlockRow& out) {
  if (r == c)
    vec_G_CalcGreen_3x3x4_ext(copy, position, Sm, out.red + k, out.blue + k, out.green + k, t.T0,
                              t.T1, t.T2, t.T3, r);
  else
    vec_RB_CalcGreen_3x3x4_ext(copy, position, Sm, out.red + k, out.blue + k, out.green + k, r);
}

// `capacity`: the samples of the work buffer; nothing is written past them.
template <class T>
void storeRow(const BlockRow& colours, int M, size_t at, size_t capacity, T* work) {
  for (size_t k = 0; k < 8; ++k) {
    const int bgr[3] = {colours.blue[k], colours.green[k], colours.red[k]};
    for (size_t c = 0; c < 3; ++c)
      if (at + 3 * k + c < capacity) work[at + 3 * k + c] = static_cast<T>(clamp(bgr[c], 0, M));
  }
}

template <class T>
void fill(uint32_t nIndex, uint32_t nImgWidth, const Region& region, const Thresholds& t, int M,
          const T* pSrc) {
  const int ys = static_cast<int>(region.y0 + 4);
  const int ye = static_cast<int>(region.F * (region.nRoiHeight + region.nRoiY) + 4);
  const int Wf = static_cast<int>(region.Wf), Sm = Wf + 4;
  if (ys >= ye || Wf + 2 < 3) return;
  // A kernel reads three rows below a pair's first row and up to eleven columns past its block.
  const std::vector<T> copy = mosaicCopyOf(pSrc, nImgWidth, region, ye + 8);

  T* const work = workBufferOf<T>(nIndex);
  const size_t capacity = g_anBGRBytes[nIndex] / sizeof(T);
  const int a = static_cast<int>((region.y0 + region.nBayer) & 1);
  const int b = static_cast<int>((region.nBayer >> 1) & 1);  // x0 is ignored
  for (int y = ys; y < ye; y += 2) {
    for (int x = 0; x == 0 || x < Wf; x += 8) {
      BlockRow rows[2];
      for (int j = 0; j < 2; ++j)
        for (int k = 0; k < 2; ++k)
          runKernel(copy.data(), (y + j) * Sm + x + 2 + k, Sm, t, (a + j) & 1, (b + k) & 1, k,
                    rows[j]);
      for (int j = 0; j < 2; ++j)
        storeRow(rows[j], M, static_cast<size_t>((y + j) * region.S + 3 * (x + 2)), capacity, work);
    }
  }
}

}  // namespace

void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY,
                          uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                          uint8_t* pDst) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const Thresholds t = {static_cast<int>(nThreshold), static_cast<int>((3 * nThreshold) >> 2),
                        static_cast<int>(nThreshold >> 1), static_cast<int>(nThreshold >> 2)};
  fill(nIndex, nImgWidth, region, t, 255, pSrc);
  ConvertToOutputFormat8(workBufferOf<uint8_t>(nIndex) + 2 * region.S, nRoiWidth, nRoiHeight, pDst,
                         nFormat, nBinning, 1);
}

void ImageColorDemosaicEx(uint32_t nIndex, uint32_t nThreshold, uint32_t nImgWidth, uint32_t nBayer,
                          uint32_t nBinning, uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX,
                          uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight,
                          const uint16_t* pSrc, uint8_t* pDst, uint32_t nDstBits,
                          uint32_t nSrcBits) {
  const Region region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight);
  const uint32_t M = shl(1, nSrcBits) - 1;
  const uint32_t A = nThreshold * M;
  const uint32_t T0 = A / 255;
  const Thresholds t = {static_cast<int>(T0), static_cast<int>((3 * T0) >> 2),
                        static_cast<int>(A / 510), static_cast<int>(A / 1020)};
  fill(nIndex, nImgWidth, region, t, static_cast<int>(M), pSrc);
  ConvertToOutputFormat16(workBufferOf<uint16_t>(nIndex) + 2 * region.S, nRoiWidth, nRoiHeight,
                          nSrcBits, pDst, nFormat, nLutMode, g_pwUserLUT[nIndex], nBinning,
                          nDstBits, 1);
}

}  // namespace reference
