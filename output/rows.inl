// The arithmetic of the output, one row of pixels at a time: plain here, and where it pays in
// registers, from the row's start as far as they reach.

#include "common/simd/lanes.inl"
#if VISTREL_LEVEL >= 1
#include "common/simd/registers.inl"
#endif

template <int N>
inline uint32_t divideByN(uint32_t sum) {
  return N == 1 ? sum : N == 2 ? sum >> 1 : N == 3 ? sum / 3 : sum >> 2;
}

// quirk: middle-row-taps. In blocks of 3x3 the left tap of the middle row lies one sample further
// on for green and red.
template <int N, int channels>
constexpr size_t tapOffset(int i, int j, int c) {
  return static_cast<size_t>(channels * j + c + (channels == 3 && N == 3 && i == 1 && j == 0 && c > 0));
}

template <int N, int channels, class T>
inline uint32_t binnedSample(const T* block, size_t stride, int c, uint32_t shift) {
  uint32_t sum = 0;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j)
      sum += uint32_t{block[static_cast<size_t>(i) * stride + tapOffset<N, channels>(i, j, c)]} >> shift;
  return divideByN<N>(sum);
}

template <class D>
inline D clampTo(uint32_t v, uint32_t ceiling) {
  return static_cast<D>(v < ceiling ? v : ceiling);
}

// Rec. 601 luma, summed in this order and truncated.
// quirk: gray-loses-one. Of pixels whose channels are equal, some come out one lower.
inline uint32_t luma(uint32_t b, uint32_t g, uint32_t r) {
  return static_cast<uint32_t>((g * 0.587 + r * 0.299) + b * 0.114);
}

#include "output/argb.inl"
#include "output/reduce.inl"
#include "output/map.inl"
#if VISTREL_LEVEL >= 1
#include "output/blocks16.inl"
#include "output/blocks8.inl"
#include "output/gray8.inl"
#endif

// The samples of a row's blocks, channel by channel.
template <int N, int channels, class T, class D>
void binRow(const T* __restrict s, size_t stride, D* __restrict d, size_t width, Reduction by) {
  size_t x = 0;
#if VISTREL_LEVEL >= 1
  if constexpr (sizeof(T) == 1) {
    if (by.shift == 0 && by.ceiling == 255) x = binBlocks8<N, channels>(s, stride, d, width);
  } else if constexpr (sizeof(D) == 1 && channels == 1 && N != 3) {
    x = binBlocks16<N>(s, stride, d, width, by);
  }
#endif
  for (; x < width; ++x)
    for (int c = 0; c < channels; ++c)
      d[channels * x + c] = clampTo<D>(
          binnedSample<N, channels>(s + channels * N * x, stride, c, by.shift), by.ceiling);
}

template <int N, int channels, class T, class D>
void packedRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* s = static_cast<const T*>(source);
  D* d = static_cast<D*>(destination);
  if constexpr (N == 1)
    reduceSamples(s, d, channels * width, by);
  else
    binRow<N, channels>(s, stride, d, width, by);
}

template <int N, class T, class D>
void monoRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  packedRow<N, 1, T, D>(source, stride, destination, width, by);
}

template <int N, class T, class D>
void bgrRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  packedRow<N, 3, T, D>(source, stride, destination, width, by);
}

// By way of BGR, a few pixels at a time.
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
#if VISTREL_LEVEL >= 1
  if constexpr (N == 1 && sizeof(T) == 1)
    if (by.shift == 0 && by.ceiling == 255) x = grayBytes(s, d, width);
#endif
  for (; x < width; ++x) {
    const T* block = s + 3 * N * x;
    const uint32_t b = binnedSample<N, 3>(block, stride, 0, by.shift);
    const uint32_t g = binnedSample<N, 3>(block, stride, 1, by.shift);
    const uint32_t r = binnedSample<N, 3>(block, stride, 2, by.shift);
    d[x] = clampTo<D>(luma(b, g, r), by.ceiling);
  }
}

#define VISTREL_BINNINGS(row, ...) \
  {row<1, __VA_ARGS__>, row<2, __VA_ARGS__>, row<3, __VA_ARGS__>, row<4, __VA_ARGS__>}
#define VISTREL_DEPTHS(row)                    \
  {VISTREL_BINNINGS(row, uint8_t, uint8_t),    \
   VISTREL_BINNINGS(row, uint16_t, uint8_t),   \
   VISTREL_BINNINGS(row, uint16_t, uint16_t)}
const RowTable kRows = {
    {VISTREL_DEPTHS(monoRow),
     VISTREL_DEPTHS(bgrRow),
     {VISTREL_BINNINGS(argbRow, uint8_t), VISTREL_BINNINGS(argbRow, uint16_t), {}},
     VISTREL_DEPTHS(grayRow)},
    mapSamples};
#undef VISTREL_DEPTHS
#undef VISTREL_BINNINGS
