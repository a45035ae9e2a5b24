#include "frontend/filter.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <iterator>
#include <type_traits>

#include "common/arith.h"
#include "common/level.h"
#include "common/simd.h"
#include "demosaic/depth.h"
#include "frontend/registry.h"

namespace vistrel {

// n results of a row, from 1 up. taps: where the samples of the first one stand.
template <class T>
using FilterRow = void (*)(const T* const* taps, const _FLT_3X3* weights, size_t n, T* results);

// What each level has of its own.
template <class T>
struct FilterRows {
  FilterRow<T> box, fiveTaps;
  FilterRow<T> weightedInWords, weighted;
};

}  // namespace vistrel

#define VISTREL_BODY "frontend/filter.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

struct Tap {
  ptrdiff_t row, column;
};

// Samples on each side of an image that stay as they are.
struct Border {
  ptrdiff_t top, bottom, left, right;
};

// Rows of samples, and their copy in the work buffer.
template <class T>
struct Image {
  T* samples;
  T* copy;
  ptrdiff_t width, height;
  size_t copied;  // samples, counted in 32 bits of bytes

  Image(unsigned nIndex, uint32_t rowSamples, uint32_t rows, T* pImage)
      : samples(pImage), copy(reinterpret_cast<T*>(g_pwBGRBuff[nIndex])), width(rowSamples),
        height(rows), copied(rowSamples * rows * uint32_t{sizeof(T)} / sizeof(T)) {}

  bool hasInside(const Border& border) const {
    return width > border.left + border.right && height > border.top + border.bottom;
  }
};

// Copies an image, as far as it is wanted, in front of the rows that change.
template <class T>
class CopyAhead {
 public:
  explicit CopyAhead(const Image<T>& image) : m_image(image) {}

  void upToRow(ptrdiff_t row) {
    const size_t end = std::min(static_cast<size_t>(row * m_image.width), m_image.copied);
    std::copy(m_image.samples + m_done, m_image.samples + end, m_image.copy + m_done);
    m_done = end;
  }

 private:
  const Image<T>& m_image;
  size_t m_done = 0;
};

// Changes the samples inside the border. tapsOf(r): the taps of row r. None reaches further down
// than the border is high.
template <class T, class TapsOf>
void filterInside(const Image<T>& image, const Border& border, FilterRow<T> filterRow,
                  const _FLT_3X3* weights, TapsOf tapsOf) {
  CopyAhead copy(image);
  const ptrdiff_t n = image.width - border.left - border.right;
  const ptrdiff_t end = image.hasInside(border) ? image.height - border.bottom : 0;
  for (ptrdiff_t r = border.top; r < end; ++r) {
    copy.upToRow(r + border.bottom + 1);
    const ptrdiff_t first = r * image.width + border.left;
    const auto& taps = tapsOf(r);
    const T* pointers[std::extent_v<std::remove_reference_t<decltype(taps)>>];
    std::transform(std::begin(taps), std::end(taps), pointers, [&](const Tap& tap) {
      return image.copy + first + tap.row * image.width + tap.column;
    });
    filterRow(pointers, weights, static_cast<size_t>(n), image.samples + first);
  }
  copy.upToRow(image.height);
}

// No sum of bytes leaves a signed word, nor does one of its parts.
bool fitsWords(const _FLT_3X3& filter) {
  int64_t reach = 0;
  for (const int32_t weight : filter.anWeights) reach += std::abs(int64_t{weight});
  return reach * 255 <= INT16_MAX;
}

// The same filter with a positive divisor, where that changes no quotient; and by minus one no
// quotient leaves 32 bits: the lowest sum wraps instead.
_FLT_3X3 negated(const _FLT_3X3& filter) {
  _FLT_3X3 result{wrapSub(0, filter.nDivisor), {}};
  std::transform(std::begin(filter.anWeights), std::end(filter.anWeights), result.anWeights,
                 [](int32_t weight) { return wrapSub(0, weight); });
  return result;
}

// Nine weights over neighbours one pixel off, where taps does not say otherwise.
template <class T>
void weigh(const Image<T>& image, ptrdiff_t pixel, const Tap (&taps)[9], const _FLT_3X3* pFilter) {
  const Border border{1, 1, pixel, pixel};
  if (!image.hasInside(border)) return CopyAhead(image).upToRow(image.height);
  const auto& rows = *VISTREL_BY_LEVEL(kFilterRows<T>);
  const bool inWords = sizeof(T) == 1 && fitsWords(*pFilter);
  const bool flips = inWords ? pFilter->nDivisor < 0 : pFilter->nDivisor == -1;
  const _FLT_3X3 filter = flips ? negated(*pFilter) : *pFilter;
  filterInside(image, border, inWords ? rows.weightedInWords : rows.weighted, &filter,
               [&](ptrdiff_t) -> const auto& { return taps; });
}

constexpr Tap kNeighbours[9] = {{-1, -1}, {-1, 0}, {-1, 1}, {0, -1}, {0, 0}, {0, 1}, {1, -1}, {1, 0}, {1, 1}};
// quirk: filter-centre-row. The outer taps of the centre row are the neighbouring bytes, of other
// channels.
constexpr Tap kNeighboursRGB3[9] = {{-1, -3}, {-1, 0}, {-1, 3}, {0, -1}, {0, 0}, {0, 1}, {1, -3}, {1, 0}, {1, 3}};
// quirk: filter-lower-left. The lower left tap is the byte before the lower one.
constexpr Tap kNeighboursRGB4[9] = {{-1, -4}, {-1, 0}, {-1, 4}, {0, -4}, {0, 0}, {0, 4}, {1, -1}, {1, 0}, {1, 4}};

// The mean of a sample and its neighbours to the right and below.
// quirk: filter-narrow-box. Of words the last three columns stay, of bytes only the last one.
template <class T>
void box(const Image<T>& image) {
  static constexpr Tap kTaps[] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}};
  filterInside(image, {0, 1, 0, sizeof(T) == 1 ? 1 : 3}, VISTREL_BY_LEVEL(kFilterRows<T>)->box,
               nullptr, [](ptrdiff_t) -> const auto& { return kTaps; });
}

// The mean of five samples of one colour of a mosaic: on the diagonals where row and column are
// even, two samples off elsewhere.
// quirk: filter-row-seam. It begins in column 0, whose left taps are the end of the row above.
template <class T>
void fiveTaps(const Image<T>& image) {
#define VISTREL_DIAGONAL {-1, -1}, {-1, 1}, {0, 0}, {1, -1}, {1, 1}
#define VISTREL_AXIAL {-2, 0}, {0, -2}, {0, 0}, {0, 2}, {2, 0}
  static constexpr Tap kTaps[2][10] = {{VISTREL_DIAGONAL, VISTREL_AXIAL},
                                       {VISTREL_AXIAL, VISTREL_AXIAL}};
  filterInside(image, {2, 2, 0, 4}, VISTREL_BY_LEVEL(kFilterRows<T>)->fiveTaps, nullptr,
               [](ptrdiff_t r) -> const auto& { return kTaps[r & 1]; });
}

// The pointer values of the fixed filters.
enum Fixed : uintptr_t { kBox = 0, kFiveTaps = 1 };

template <class T>
void filterGray(const Image<T>& image, const _FLT_3X3* pFilter) {
  switch (reinterpret_cast<uintptr_t>(pFilter)) {
    case kBox: return box(image);
    case kFiveTaps: return fiveTaps(image);
    default: return weigh(image, 1, kNeighbours, pFilter);
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
  weigh(Image(nIndex, 3 * nImgWidth, nImgHeight, pImage), 3, kNeighboursRGB3, pFilter);
}

void ImgFilterRGB4(unsigned nIndex, const _FLT_3X3* pFilter, uint32_t nImgWidth,
                   uint32_t nImgHeight, uint8_t* pImage) {
  weigh(Image(nIndex, 4 * nImgWidth, nImgHeight, pImage), 4, kNeighboursRGB4, pFilter);
}

}  // namespace vistrel

using namespace vistrel;

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
