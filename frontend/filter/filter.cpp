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
#include "frontend/filter/filter_kernels.h"
#include "streams/registry.h"

#define VISTREL_BODY "frontend/filter/filter_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

// Whether the faster row kernels can take these weights. For 8-bit samples, no sum and no partial
// sum may exceed 16 signed bits. For 16-bit samples, every weight must fit 16 signed bits.
template <class T>
bool fitsFastPath(const int32_t (&weights)[9]) {
  int64_t sum = 0;
  bool fit16Bits = true;
  for (const int32_t w : weights) {
    sum += std::abs(int64_t{w});
    fit16Bits = fit16Bits && w == static_cast<int16_t>(w);
  }
  return sizeof(T) == 1 ? sum * 255 <= INT16_MAX : fit16Bits;
}

// The same filter with weights and divisor negated, used only if that changes no quotient. A
// divisor of -1 becomes 1, so that no quotient exceeds 32 bits: the lowest sum wraps instead.
_FLT_3X3 negated(const _FLT_3X3& filter) {
  _FLT_3X3 result{wrapSub(0, filter.nDivisor), {}};
  std::transform(std::begin(filter.anWeights), std::end(filter.anWeights), result.anWeights,
                 [](int32_t weight) { return wrapSub(0, weight); });
  return result;
}

using NineTaps = std::array<FilterOffset, 9>;

// `columns` lists the taps row by row.
constexpr NineTaps nineTaps(const int (&columns)[9]) {
  NineTaps taps{};
  for (int i = 0; i < 9; ++i) taps[i] = {i / 3 - 1, columns[i]};
  return taps;
}

constexpr NineTaps kGrayTaps = nineTaps({-1, 0, 1, /**/ -1, 0, 1, /**/ -1, 0, 1});
// quirk: filter-centre-row. The outer taps of the centre row are the neighbouring bytes, which
// belong to other channels.
constexpr NineTaps kRgb3Taps = nineTaps({-3, 0, 3, /**/ -1, 0, 1, /**/ -3, 0, 3});
// quirk: filter-lower-left. The lower left tap is the byte just before the lower one.
constexpr NineTaps kRgb4Taps = nineTaps({-4, 0, 4, /**/ -4, 0, 4, /**/ -1, 0, 4});

// pixel: the width of the left and the right border, in samples.
template <class T>
void applyWeights(const FilterImage<T>& image, ptrdiff_t pixel, const NineTaps& taps,
                  const _FLT_3X3* pFilter) {
  const Border border{1, 1, pixel, pixel};
  if (!image.hasInside(border)) return CopyAhead(image).upToRow(image.height);
  const bool fast = fitsFastPath<T>(pFilter->anWeights);
  const bool negates = sizeof(T) == 1 && fast ? pFilter->nDivisor < 0 : pFilter->nDivisor == -1;
  const _FLT_3X3 filter = negates ? negated(*pFilter) : *pFilter;
  const auto& rows = *VISTREL_BY_LEVEL(kFilterKernels<T>);
  const auto row = fast ? rows.fastWeights : rows.anyWeights;
  filterInside(
      image, border, [&](ptrdiff_t) { return taps; },
      [&](const T* const* samples, size_t n, T* results) { row(filter, samples, n, results); });
}

// The mean of a sample and its neighbours to the right and below.
// quirk: filter-narrow-box. The last three columns of 16-bit samples stay unchanged, but only the
// last one of 8-bit samples.
template <class T>
void applyBox(const FilterImage<T>& image) {
  static constexpr std::array<FilterOffset, 4> kTaps = {{{0, 0}, {0, 1}, {1, 0}, {1, 1}}};
  filterInside(
      image, {0, 1, 0, sizeof(T) == 1 ? 1 : 3}, [](ptrdiff_t) { return kTaps; },
      VISTREL_BY_LEVEL(kFilterKernels<T>)->box);
}

// The mean of five samples of one colour of a mosaic: a diagonal cross where row and column are
// even, elsewhere an upright cross of samples two pixels away. Taps of even columns come first.
// quirk: filter-row-seam. It begins in column 0, whose left taps are at the end of the row above.
template <class T>
void applyFiveTaps(const FilterImage<T>& image) {
  static constexpr FilterOffset kDiagonal[] = {{-1, -1}, {-1, 1}, {0, 0}, {1, -1}, {1, 1}};
  static constexpr FilterOffset kUpright[] = {{-2, 0}, {0, -2}, {0, 0}, {0, 2}, {2, 0}};
  const auto tapsOf = [](ptrdiff_t r) {
    std::array<FilterOffset, 10> taps;
    std::copy_n(r % 2 == 0 ? kDiagonal : kUpright, 5, taps.begin());
    std::copy_n(kUpright, 5, taps.begin() + 5);
    return taps;
  };
  filterInside(image, {2, 2, 0, 4}, tapsOf, VISTREL_BY_LEVEL(kFilterKernels<T>)->fiveTaps);
}

// The pointer values that select the fixed filters.
enum Fixed : uintptr_t { kBox = 0, kFiveTaps = 1 };

template <class T>
void filterGray(const FilterImage<T>& image, const _FLT_3X3* pFilter) {
  switch (reinterpret_cast<uintptr_t>(pFilter)) {
    case kBox: return applyBox(image);
    case kFiveTaps: return applyFiveTaps(image);
    default: return applyWeights(image, 1, kGrayTaps, pFilter);
  }
}

template <class T>
void filterPixels(const FilterImage<T>& image, ptrdiff_t pixel, const _FLT_3X3* pFilter) {
  applyWeights(image, pixel, pixel == 3 ? kRgb3Taps : kRgb4Taps, pFilter);
}

}  // namespace

void filterImage(void* copy, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                 uint32_t nImgHeight, void* pImage) {
  uint8_t* const bytes = static_cast<uint8_t*>(pImage);
  switch (nFormat) {
    case IMG_FMT_MONO8:
    case IMG_FMT_GRAY8: return filterGray(FilterImage(copy, nImgWidth, nImgHeight, bytes), pFilter);
    case IMG_FMT_MONO16:
    case IMG_FMT_GRAY16:
      return filterGray(FilterImage(copy, nImgWidth, nImgHeight, static_cast<uint16_t*>(pImage)),
                        pFilter);
    case IMG_FMT_BGR24:
      return filterPixels(FilterImage(copy, 3 * nImgWidth, nImgHeight, bytes), 3, pFilter);
    // quirk: filter-bgr48. Pixels of three 16-bit samples are read as four bytes.
    default: filterPixels(FilterImage(copy, 4 * nImgWidth, nImgHeight, bytes), 4, pFilter);
  }
}

}  // namespace vistrel::core

using namespace vistrel::core;

uint32_t ImgFilter(uint32_t nID, const _FLT_3X3* pFilter, uint32_t nFormat, uint32_t nImgWidth,
                   uint32_t nImgHeight, void* pImage) {
  filterImage(g_pwBGRBuff[ID2Index(nID)], pFilter, nFormat, nImgWidth, nImgHeight, pImage);
  return 1;
}
