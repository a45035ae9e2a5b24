// Monochrome blocks of 2x2 and 4x4 16-bit samples to bytes. Clamping samples at 1023 first changes
// no 8-bit result, and keeps every sum below 32768.
#if defined(VISTREL_BLOCKS16_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_BLOCKS16_INL_H
#undef VISTREL_BLOCKS16_INL_H
#else
#define VISTREL_BLOCKS16_INL_H
#endif

#include "output/reduce-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

VISTREL_INLINE Register columnSums(const uint16_t* s, size_t stride, int rows, ShiftCount shift) {
  Register sum = reduced(s, shift, set1_16(1023));
  for (int i = 1; i < rows; ++i) sum = add16(sum, reduced(s + i * stride, shift, set1_16(1023)));
  return sum;
}

// Computes a register of bytes from N times as many 16-bit samples in each of N rows.
template <int N>
VISTREL_INLINE Register blockMeans16(const uint16_t* s, size_t stride, ShiftCount shift) {
  constexpr size_t step = kRegisterBytes / 2;
  if constexpr (N == 1) {
    return columnSums(s, stride, 1, shift);
  }
  Register sums[N];
  for (int i = 0; i < N; ++i) sums[i] = pairSums16(columnSums(s + i * step, stride, N, shift));
  Register pairs = inOrder(pack32(sums[0], sums[1]));
  if constexpr (N == 2) return shiftRight16<1>(pairs);
  const Register more = inOrder(pack32(sums[2], sums[3]));
  pairs = inOrder(pack32(pairSums16(pairs), pairSums16(more)));
  return shiftRight16<2>(pairs);
}

template <int N>
VISTREL_INLINE size_t binBlocks16(const uint16_t* s, size_t stride, uint8_t* d, size_t width,
                                  Reduction by) {
  constexpr size_t half = kRegisterBytes / 2;
  const ShiftCount shift = shiftCount(by.shift);
  const Register ceiling = set1_16(static_cast<int>(by.ceiling));
  size_t x = 0;
  for (; x + 2 * half <= width; x += 2 * half) {
    const Register low = min16(blockMeans16<N>(s + N * x, stride, shift), ceiling);
    const Register high = min16(blockMeans16<N>(s + N * (x + half), stride, shift), ceiling);
    storeRegister(d + x, inOrder(pack16(low, high)));
  }
  return x;
}

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
