#include "frontend/filter/filter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <iterator>

#include "common/arith.h"
#include "common/depth.h"
#include "cpu/level.h"
#include "frontend/filter/filter_image.h"
#include "frontend/filter/filter_rows.h"

#define VISTREL_BODY "frontend/filter/filter_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

// What the faster rows can do: of bytes, no sum and no part of one leaves a signed word; of words,
// the weights are signed words.
template <class T>
bool areSmall(const int32_t (&weights)[9]) {
  int64_t sum = 0;
  bool areWords = true;
  for (const int32_t w : weights) {
    sum += std::abs(int64_t{w});
    areWords = areWords && w == static_cast<int16_t>(w);
  }
  return sizeof(T) == 1 ? sum * 255 <= INT16_MAX : areWords;
}

// The same filter with a positive divisor, where that changes no quotient; and by minus one no
// quotient leaves 32 bits: the lowest sum wraps instead.
_FLT_3X3 negated(const _FLT_3X3& filter) {
  _FLT_3X3 result{wrapSub(0, filter.nDivisor), {}};
  std::transform(std::begin(filter.anWeights), std::end(filter.anWeights), result.anWeights,
                 [](int32_t weight) { return wrapSub(0, weight); });
  return result;
}

using NineTaps = std::array<Tap, 9>;

// From the columns, row by row.
constexpr NineTaps nineTaps(const int (&columns)[9]) {
  NineTaps taps{};
  for (int i = 0; i < 9; ++i) taps[i] = {i / 3 - 1, columns[i]};
  return taps;
}

constexpr NineTaps kGrayTaps = nineTaps({-1, 0, 1, /**/ -1, 0, 1, /**/ -1, 0, 1});
// quirk: filter-centre-row. The outer taps of the centre row are the neighbouring bytes, of other
// channels.
constexpr NineTaps kRgb3Taps = nineTaps({-3, 0, 3, /**/ -1, 0, 1, /**/ -3, 0, 3});
// quirk: filter-lower-left. The lower left tap is the byte right before the lower one.
constexpr NineTaps kRgb4Taps = nineTaps({-4, 0, 4, /**/ -4, 0, 4, /**/ -1, 0, 4});

// pixel: in samples, how wide the left and right border is.
template <class T>
void weigh(const Image<T>& image, ptrdiff_t pixel, const NineTaps& taps, const _FLT_3X3* pFilter) {
  const Border border{1, 1, pixel, pixel};
  if (!image.hasInside(border)) return CopyAhead(image).upToRow(image.height);
  const bool small = areSmall<T>(pFilter->anWeights);
  const bool flips = sizeof(T) == 1 && small ? pFilter->nDivisor < 0 : pFilter->nDivisor == -1;
  const _FLT_3X3 filter = flips ? negated(*pFilter) : *pFilter;
  const auto& rows = *VISTREL_BY_LEVEL(kFilterKernels<T>);
  const auto row = small ? rows.smallWeights : rows.anyWeights;
  filterInside(
      image, border, [&](ptrdiff_t) { return taps; },
      [&](const T* const* samples, size_t n, T* results) { row(filter, samples, n, results); });
}

// The mean of a sample and its neighbours to the right and below.
// quirk: filter-narrow-box. Of words the last three columns stay, of bytes only the last one.
template <class T>
void box(const Image<T>& image) {
  static constexpr std::array<Tap, 4> kTaps = {{{0, 0}, {0, 1}, {1, 0}, {1, 1}}};
  filterInside(
      image, {0, 1, 0, sizeof(T) == 1 ? 1 : 3}, [](ptrdiff_t) { return kTaps; },
      VISTREL_BY_LEVEL(kFilterKernels<T>)->box);
}

// The mean of five samples of one colour of a mosaic: a cross of diagonals where row and column
// are even, one of samples two off elsewhere. Taps of even columns first, then those of odd ones.
// quirk: filter-row-seam. It begins in column 0, whose left taps are the end of the row above.
template <class T>
void fiveTaps(const Image<T>& image) {
  static constexpr Tap kDiagonal[] = {{-1, -1}, {-1, 1}, {0, 0}, {1, -1}, {1, 1}};
  static constexpr Tap kUpright[] = {{-2, 0}, {0, -2}, {0, 0}, {0, 2}, {2, 0}};
  const auto tapsOf = [](ptrdiff_t r) {
    std::array<Tap, 10> taps;
    std::copy_n(r % 2 == 0 ? kDiagonal : kUpright, 5, taps.begin());
    std::copy_n(kUpright, 5, taps.begin() + 5);
    return taps;
  };
  filterInside(image, {2, 2, 0, 4}, tapsOf, VISTREL_BY_LEVEL(kFilterKernels<T>)->fiveTaps);
}

// The pointer values of the fixed filters.
enum Fixed : uintptr_t { kBox = 0, kFiveTaps = 1 };

template <class T>
void filterGray(const Image<T>& image, const _FLT_3X3* pFilter) {
  switch (reinterpret_cast<uintptr_t>(pFilter)) {
    case kBox: return box(image);
    case kFiveTaps: return fiveTaps(image);
    default: return weigh(image, 1, kGrayTaps, pFilter);
  }
}

}  // namespace

void ImgFilterGray8(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                    uint32_t nImgHeight, uint8_t* pImage) {
  filterGray(Image(nIndex, nImgWidth, nImgHeight, pImage), pFilter);
}

void ImgFilterGray16(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                     uint32_t nImgHeight, uint16_t* pImage) {
  filterGray(Image(nIndex, nImgWidth, nImgHeight, pImage), pFilter);
}

void ImgFilterRGB3(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage) {
  weigh(Image(nIndex, 3 * nImgWidth, nImgHeight, pImage), 3, kRgb3Taps, pFilter);
}

void ImgFilterRGB4(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage) {
  weigh(Image(nIndex, 4 * nImgWidth, nImgHeight, pImage), 4, kRgb4Taps, pFilter);
}

}  // namespace vistrel::core

using namespace vistrel::core;

uint32_t ImgFilter(uint32_t nID, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                   uint32_t nImgHeight, void* pImage) {
  const unsigned nIndex = ID2Index(nID);
  uint8_t* const bytes = static_cast<uint8_t*>(pImage);
  switch (nFormat) {
    case IMG_FMT_MONO8:
    case IMG_FMT_GRAY8: ImgFilterGray8(nIndex, pFilter, nImgWidth, nImgHeight, bytes); break;
    case IMG_FMT_MONO16:
    case IMG_FMT_GRAY16:
      ImgFilterGray16(nIndex, pFilter, nImgWidth, nImgHeight, static_cast<uint16_t*>(pImage));
      break;
    case IMG_FMT_BGR24: ImgFilterRGB3(nIndex, pFilter, nImgWidth, nImgHeight, bytes); break;
    // quirk: filter-bgr48. Words of three channels are taken for bytes of four.
    default: ImgFilterRGB4(nIndex, pFilter, nImgWidth, nImgHeight, bytes); break;
  }
  return 1;
}
