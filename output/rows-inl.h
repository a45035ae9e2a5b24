// The kernels that write one row of output pixels. Where it pays, they process most of the row in
// registers, from its start; a plain loop does the rest.
#if defined(VISTREL_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_ROWS_INL_H
#undef VISTREL_ROWS_INL_H
#else
#define VISTREL_ROWS_INL_H
#endif

#include "output/argb-inl.h"
#include "output/blocks16-inl.h"
#include "output/blocks8-inl.h"
#include "output/gray8-inl.h"
#include "output/map-inl.h"
#include "output/reduce-inl.h"
#include "output/rows.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Bins the samples of a row's blocks, channel by channel.
template <int N, int channels, class T, class D>
void binRow(const T* __restrict s, size_t stride, D* __restrict d, size_t width, Reduction by) {
  size_t x = 0;
#if VISTREL_PERMUTES
  if constexpr (sizeof(T) == 1) {
    if (by.shift == 0 && by.ceiling == 255) x = binBlocks8<N, channels>(s, stride, d, width);
  } else if constexpr (sizeof(D) == 1 && channels == 1 && N != 3) {
    x = binBlocks16<N>(s, stride, d, width, by);
  }
#endif
  for (; x < width; ++x)
    for (int c = 0; c < channels; ++c)
      d[channels * x + c] = atMost<D>(
          binnedSample<N, channels>(s + channels * N * x, stride, c, by.shift), by.ceiling);
}

template <int N, int channels, class T, class D>
void reducedRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* s = static_cast<const T*>(source);
  D* d = static_cast<D*>(destination);
  if constexpr (N == 1)
    reduceSamples(s, d, channels * width, by);
  else
    binRow<N, channels>(s, stride, d, width, by);
}

template <int N, class T, class D>
void monoRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  reducedRow<N, 1, T, D>(source, stride, destination, width, by);
}

template <int N, class T, class D>
void bgrRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  reducedRow<N, 3, T, D>(source, stride, destination, width, by);
}

// Converts to BGR first, a few pixels at a time.
template <int N, class T>
void argbRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* s = static_cast<const T*>(source);
  uint8_t* d = static_cast<uint8_t*>(destination);
  if constexpr (N == 1 && sizeof(T) == 1)
    if (by.shift == 0 && by.ceiling == 255) return spreadToArgb(s, d, width);
  constexpr size_t tileWidth = 256;
  uint8_t tile[3 * tileWidth];
  for (size_t x = 0; x < width; x += tileWidth) {
    const size_t n = width - x < tileWidth ? width - x : tileWidth;
    bgrRow<N, T, uint8_t>(s + 3 * N * x, stride, tile, n, by);
    spreadToArgb(tile, d + 4 * x, n);
  }
}

template <int N, class T, class D>
void grayRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* __restrict s = static_cast<const T*>(source);
  D* __restrict d = static_cast<D*>(destination);
  size_t x = 0;
#if VISTREL_PERMUTES
  if constexpr (N == 1 && sizeof(T) == 1)
    if (by.shift == 0 && by.ceiling == 255) x = grayBytes(s, d, width);
#endif
  for (; x < width; ++x) {
    const T* block = s + 3 * N * x;
    const uint32_t b = binnedSample<N, 3>(block, stride, 0, by.shift);
    const uint32_t g = binnedSample<N, 3>(block, stride, 1, by.shift);
    const uint32_t r = binnedSample<N, 3>(block, stride, 2, by.shift);
    d[x] = atMost<D>(luma(b, g, r), by.ceiling);
  }
}

#define VISTREL_BINNINGS(row, ...) \
  { row<1, __VA_ARGS__>, row<2, __VA_ARGS__>, row<3, __VA_ARGS__>, row<4, __VA_ARGS__> }
#define VISTREL_DEPTHS(row)                                                            \
  {                                                                                    \
    VISTREL_BINNINGS(row, uint8_t, uint8_t), VISTREL_BINNINGS(row, uint16_t, uint8_t), \
        VISTREL_BINNINGS(row, uint16_t, uint16_t)                                      \
  }
const RowKernels kRowKernels = {
    {VISTREL_DEPTHS(monoRow),
     VISTREL_DEPTHS(bgrRow),
     {VISTREL_BINNINGS(argbRow, uint8_t), VISTREL_BINNINGS(argbRow, uint16_t), {}},
     VISTREL_DEPTHS(grayRow)},
    mapSamples};
#undef VISTREL_DEPTHS
#undef VISTREL_BINNINGS

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
