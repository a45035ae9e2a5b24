// The arithmetic of the output, one row of pixels at a time.

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

template <int N, class T, class D>
void monoRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* __restrict s = static_cast<const T*>(source);
  D* __restrict d = static_cast<D*>(destination);
  for (size_t x = 0; x < width; ++x)
    d[x] = clampTo<D>(binnedSample<N, 1>(s + N * x, stride, 0, by.shift), by.ceiling);
}

template <int N, class T, class D>
void bgrRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  if constexpr (N == 1) return monoRow<1, T, D>(source, stride, destination, 3 * width, by);
  const T* __restrict s = static_cast<const T*>(source);
  D* __restrict d = static_cast<D*>(destination);
  for (size_t x = 0; x < width; ++x)
    for (int c = 0; c < 3; ++c)
      d[3 * x + c] = clampTo<D>(binnedSample<N, 3>(s + 3 * N * x, stride, c, by.shift), by.ceiling);
}

// Byte 0 of a pixel stays as it was.
template <int N, class T, class D>
void argbRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* __restrict s = static_cast<const T*>(source);
  D* __restrict d = static_cast<D*>(destination);
  for (size_t x = 0; x < width; ++x)
    for (int c = 0; c < 3; ++c)
      d[4 * x + 3 - c] = clampTo<D>(binnedSample<N, 3>(s + 3 * N * x, stride, c, by.shift), by.ceiling);
}

// Rec. 601 luma, summed in this order and truncated: equal channels may come out one lower.
inline uint32_t luma(uint32_t b, uint32_t g, uint32_t r) {
  return static_cast<uint32_t>((g * 0.587 + r * 0.299) + b * 0.114);
}

template <int N, class T, class D>
void grayRow(const void* source, size_t stride, void* destination, size_t width, Reduction by) {
  const T* __restrict s = static_cast<const T*>(source);
  D* __restrict d = static_cast<D*>(destination);
  for (size_t x = 0; x < width; ++x) {
    const T* block = s + 3 * N * x;
    const uint32_t b = binnedSample<N, 3>(block, stride, 0, by.shift);
    const uint32_t g = binnedSample<N, 3>(block, stride, 1, by.shift);
    const uint32_t r = binnedSample<N, 3>(block, stride, 2, by.shift);
    d[x] = clampTo<D>(luma(b, g, r), by.ceiling);
  }
}

inline void mapSamples(const uint16_t* source, uint8_t* destination, size_t n, const uint8_t* table,
                       uint32_t shift) {
  for (size_t i = 0; i < n; ++i) {
    const uint32_t index = uint32_t{source[i]} >> shift;
    destination[i] = table[index < 1024 ? index : 1023];
  }
}

#define VISTREL_BINNINGS(row, T, D) {row<1, T, D>, row<2, T, D>, row<3, T, D>, row<4, T, D>}
#define VISTREL_DEPTHS(row)                    \
  {VISTREL_BINNINGS(row, uint8_t, uint8_t),    \
   VISTREL_BINNINGS(row, uint16_t, uint8_t),   \
   VISTREL_BINNINGS(row, uint16_t, uint16_t)}
const RowTable kRows = {
    {VISTREL_DEPTHS(monoRow), VISTREL_DEPTHS(bgrRow), VISTREL_DEPTHS(argbRow), VISTREL_DEPTHS(grayRow)},
    mapSamples};
#undef VISTREL_DEPTHS
#undef VISTREL_BINNINGS
