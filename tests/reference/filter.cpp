#include "tests/reference/filter.h"

#include <cstddef>
#include <cstring>

#include "tests/reference/arith.h"
#include "tests/reference/registry.h"

namespace reference {

namespace {

// The copy of the image in the work buffer. P(r, c): row r, sample c of rows of L samples.
template <class T>
struct Copy {
  const T* samples;
  ptrdiff_t L;
  uint32_t P(ptrdiff_t r, ptrdiff_t c) const { return samples[r * L + c]; }
};

template <class T>
Copy<T> copyToWorkBuffer(uint32_t nIndex, const T* pImage, uint32_t samples, uint32_t L) {
  std::memcpy(g_pwBGRBuff[nIndex], pImage, uint32_t{samples * static_cast<uint32_t>(sizeof(T))});
  return {reinterpret_cast<const T*>(g_pwBGRBuff[nIndex]), static_cast<ptrdiff_t>(L)};
}

struct Kernel {
  int32_t divisor, w[9];
};

Kernel kernelAt(const void* pFilter) {
  int32_t values[10];
  std::memcpy(values, pFilter, sizeof values);
  Kernel kernel = {values[0], {}};
  for (int k = 0; k < 9; ++k) kernel.w[k] = values[k + 1];
  return kernel;
}

// The positions of the nine taps in rows r - 1, r and r + 1.
struct Offsets {
  int columns[9];
};

// Applies the filter to rows 1 .. h - 2 and samples first .. last.
template <class T>
void convolve(const Kernel& kernel, const Offsets& offsets, const Copy<T>& copy, ptrdiff_t h,
              ptrdiff_t first, ptrdiff_t last, int ceiling, T* pImage) {
  for (ptrdiff_t r = 1; r <= h - 2; ++r) {
    for (ptrdiff_t p = first; p <= last; ++p) {
      uint32_t sum = 0;
      for (int k = 0; k < 9; ++k)
        sum += static_cast<uint32_t>(kernel.w[k]) * copy.P(r - 1 + k / 3, p + offsets.columns[k]);
      const int v = static_cast<int32_t>(sum) / kernel.divisor;
      pImage[r * copy.L + p] = static_cast<T>(clamp(v, 0, ceiling));
    }
  }
}

bool isOneOrTwo(uint32_t v) { return v == 1 || v == 2; }
bool isTwoToFour(uint32_t v) { return v >= 2 && v <= 4; }

template <class T>
void convolveGray(const void* pFilter, const Copy<T>& copy, uint32_t w, uint32_t h, int ceiling,
                  T* pImage) {
  if (isOneOrTwo(h) || isOneOrTwo(w)) return;
  convolve(kernelAt(pFilter), {{-1, 0, 1, -1, 0, 1, -1, 0, 1}}, copy, h, 1,
           static_cast<ptrdiff_t>(w) - 2, ceiling, pImage);
}

template <class T>
uint32_t boxSum(const Copy<T>& copy, ptrdiff_t r, ptrdiff_t c) {
  return copy.P(r, c) + copy.P(r, c + 1) + copy.P(r + 1, c) + copy.P(r + 1, c + 1);
}

// Taps to the left of a row's first sample read the end of the row above.
template <class T>
uint32_t fiveTapSum(const Copy<T>& copy, ptrdiff_t r, ptrdiff_t c) {
  if (r % 2 == 0 && c % 2 == 0)
    return copy.P(r - 1, c - 1) + copy.P(r - 1, c + 1) + copy.P(r, c) + copy.P(r + 1, c - 1) +
           copy.P(r + 1, c + 1);
  return copy.P(r - 2, c) + copy.P(r, c - 2) + copy.P(r, c) + copy.P(r, c + 2) + copy.P(r + 2, c);
}

uintptr_t numberOf(const void* pFilter) { return reinterpret_cast<uintptr_t>(pFilter); }

}  // namespace

void ImgFilterGray8(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                    uint8_t* pImage) {
  const auto copy = copyToWorkBuffer(nIndex, pImage, nImgWidth * nImgHeight, nImgWidth);
  const ptrdiff_t w = nImgWidth, h = nImgHeight;
  if (numberOf(pFilter) == 0) {
    if (h == 1 || w == 1) return;
    for (ptrdiff_t r = 0; r <= h - 2; ++r)
      for (ptrdiff_t c = 0; c <= w - 2; ++c)
        pImage[r * w + c] = static_cast<uint8_t>(boxSum(copy, r, c) >> 2);
  } else if (numberOf(pFilter) == 1) {
    if (isTwoToFour(nImgHeight) || isTwoToFour(nImgWidth)) return;
    for (ptrdiff_t r = 2; r <= h - 3; ++r)
      for (ptrdiff_t c = 0; c <= w - 5; ++c)
        pImage[r * w + c] = static_cast<uint8_t>(fiveTapSum(copy, r, c) / 5);
  } else {
    convolveGray(pFilter, copy, nImgWidth, nImgHeight, 255, pImage);
  }
}

void ImgFilterGray16(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                     uint16_t* pImage) {
  const auto copy = copyToWorkBuffer(nIndex, pImage, nImgWidth * nImgHeight, nImgWidth);
  const ptrdiff_t w = nImgWidth, h = nImgHeight;
  if (numberOf(pFilter) == 0) {
    if (h == 1 || w == 2 || w == 3) return;
    for (ptrdiff_t r = 0; r <= h - 2; ++r) {
      for (ptrdiff_t c = 0; c <= w - 4; ++c) {
        const uint32_t mean = boxSum(copy, r, c) >> 2;
        pImage[r * w + c] = static_cast<uint16_t>(mean < 1023 ? mean : 1023);
      }
    }
  } else if (numberOf(pFilter) == 1) {
    if (isTwoToFour(nImgHeight) || isTwoToFour(nImgWidth)) return;
    for (ptrdiff_t r = 2; r <= h - 3; ++r) {
      for (ptrdiff_t c = 0; c <= w - 5; ++c) {
        const uint32_t sum = fiveTapSum(copy, r, c);
        pImage[r * w + c] = static_cast<uint16_t>(sum < 5120 ? sum / 5 : 1023);
      }
    }
  } else {
    convolveGray(pFilter, copy, nImgWidth, nImgHeight, 1023, pImage);
  }
}

// The outer taps of the centre row are the neighbouring bytes.
void ImgFilterRGB3(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                   uint8_t* pImage) {
  const uint32_t L = 3 * nImgWidth;
  const auto copy = copyToWorkBuffer(nIndex, pImage, L * nImgHeight, L);
  if (isOneOrTwo(nImgHeight) || (L >= 3 && L <= 6)) return;
  convolve(kernelAt(pFilter), {{-3, 0, 3, -1, 0, 1, -3, 0, 3}}, copy, nImgHeight, 3,
           static_cast<ptrdiff_t>(L) - 4, 255, pImage);
}

// The lower left tap is the byte before the lower one.
void ImgFilterRGB4(uint32_t nIndex, const void* pFilter, uint32_t nImgWidth, uint32_t nImgHeight,
                   uint8_t* pImage) {
  const uint32_t L = 4 * nImgWidth;
  const auto copy = copyToWorkBuffer(nIndex, pImage, L * nImgHeight, L);
  if (isOneOrTwo(nImgHeight) || (L >= 4 && L <= 8)) return;
  convolve(kernelAt(pFilter), {{-4, 0, 4, -4, 0, 4, -1, 0, 4}}, copy, nImgHeight, 4,
           static_cast<ptrdiff_t>(L) - 5, 255, pImage);
}

uint32_t ImgFilter(uint32_t nID, const void* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                   uint32_t nImgHeight, void* pImage) {
  const unsigned nIndex = ID2Index(nID);
  uint8_t* const bytes = static_cast<uint8_t*>(pImage);
  switch (nFormat) {
    case 0:
    case 5: ImgFilterGray8(nIndex, pFilter, nImgWidth, nImgHeight, bytes); break;
    case 1:
    case 6:
      ImgFilterGray16(nIndex, pFilter, nImgWidth, nImgHeight, static_cast<uint16_t*>(pImage));
      break;
    case 2: ImgFilterRGB3(nIndex, pFilter, nImgWidth, nImgHeight, bytes); break;
    default: ImgFilterRGB4(nIndex, pFilter, nImgWidth, nImgHeight, bytes); break;
  }
  return 1;
}

}  // namespace reference
