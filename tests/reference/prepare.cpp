#include "tests/reference/guarded.h"

namespace reference {

namespace {

template <class T>
void copy(const T* from, ptrdiff_t samples, T* to) {
  for (ptrdiff_t k = 0; k < samples; ++k) to[k] = from[k];
}

template <class T>
void prepare(uint32_t nImgWidth, const Region& a, const T* pSrc, T* pWork) {
  for (uint32_t j = 0; j < a.Hf; ++j) {
    for (uint32_t i = 0; i < a.Wf; ++i) {
      const T* const source = pSrc + (size_t{j} * nImgWidth + a.x0 + i);
      const auto s = [&](int dx, int dy) -> uint32_t {
        return source[dy * static_cast<ptrdiff_t>(nImgWidth) + dx];
      };
      const bool interior = j > 0 && j < a.Hf - 1 && i > 0 && i < a.Wf - 1;
      T* const pixel =
          pWork + (static_cast<ptrdiff_t>(j) + 2) * a.S + 3 * (static_cast<ptrdiff_t>(i) + 2);
      pixel[kBlue] = pixel[kGreen] = pixel[kRed] = 0;
      switch (a.siteOf(i, j)) {
        case SITE_R: pixel[kRed] = *source; break;
        case SITE_B: pixel[kBlue] = *source; break;
        case SITE_GR:
        case SITE_GB:
          pixel[kGreen] = *source;
          if (interior)
            pixel[kGreen] =
                static_cast<T>((s(-1, -1) + 4 * s(0, 0) + s(1, -1) + s(-1, 1) + s(1, 1)) >> 3);
          break;
      }
    }
  }
  const ptrdiff_t Wf = a.Wf, Hf = a.Hf;
  for (ptrdiff_t j = 0; j < Hf; ++j) {
    T* const row = pWork + (j + 2) * a.S;
    copy(row + 6, 6, row);
    copy(row + 3 * Wf, 6, row + 3 * (Wf + 2));
  }
  copy(pWork + 2 * a.S, 2 * a.S, pWork);
  copy(pWork + Hf * a.S, 2 * a.S, pWork + (Hf + 2) * a.S);
}

}  // namespace

void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint8_t* pSrc,
                      uint8_t* pWork) {
  prepare(nImgWidth, Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight), pSrc, pWork);
}

void PrepareBGRBuffer(uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX,
                      uint32_t nRoiY, uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                      uint16_t* pWork) {
  prepare(nImgWidth, Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight), pSrc, pWork);
}

}  // namespace reference
