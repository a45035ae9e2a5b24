// The arithmetic of one output sample.
#if defined(VISTREL_ARITHMETIC_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_ARITHMETIC_INL_H
#undef VISTREL_ARITHMETIC_INL_H
#else
#define VISTREL_ARITHMETIC_INL_H
#endif

#include "common/simd/simd.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <int N>
inline uint32_t divideByN(uint32_t sum) {
  return N == 1 ? sum : N == 2 ? sum >> 1 : N == 3 ? sum / 3 : sum >> 2;
}

// quirk: middle-row-taps. In blocks of 3x3, the left tap of the middle row is one sample too far to
// the right for green and red.
template <int N, int channels>
constexpr size_t tapOffset(int i, int j, int c) {
  return static_cast<size_t>(channels * j + c +
                             (channels == 3 && N == 3 && i == 1 && j == 0 && c > 0));
}

template <int N, int channels, class T>
inline uint32_t binnedSample(const T* block, size_t stride, int c, uint32_t shift) {
  uint32_t sum = 0;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j)
      sum += uint32_t{block[static_cast<size_t>(i) * stride + tapOffset<N, channels>(i, j, c)]} >>
             shift;
  return divideByN<N>(sum);
}

template <class D>
inline D atMost(uint32_t v, uint32_t ceiling) {
  return static_cast<D>(v < ceiling ? v : ceiling);
}

// Rec. 601 luma, summed in this order and truncated.
// quirk: gray-loses-one. Some pixels whose channels are equal come out one lower.
inline uint32_t luma(uint32_t b, uint32_t g, uint32_t r) {
  return static_cast<uint32_t>((g * 0.587 + r * 0.299) + b * 0.114);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
