// Blocks of 2x2 to 4x4 bytes. The taps of a channel are moved next to each other; then sums of
// neighbours, of rows, and of neighbours again make the sum of a block.
#if defined(VISTREL_BLOCKS8_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_BLOCKS8_INL_H
#undef VISTREL_BLOCKS8_INL_H
#else
#define VISTREL_BLOCKS8_INL_H
#endif

#include "common/simd/registers-inl.h"
#include "output/arithmetic-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

// A group of 16 source bytes, of which kSource make kOutputs results. Blocks of 2 need one pair
// sum, so that results have 16 bits; larger ones need two, and results have 32 bits.
template <int N, int channels>
struct Taps {
  static constexpr int kWidth = N == 2 ? 2 : 4;  // bytes of a result's taps, padding included
  static constexpr int kOutputs = 16 / kWidth / channels * channels;
  static constexpr int kSource = kOutputs * N;
  static constexpr bool kRegular = channels == 1 && N != 3;  // taps are already neighbours

  alignas(16) uint8_t order[16];
  explicit constexpr Taps(int blockRow) : order() {
    for (int i = 0; i < 16; ++i) {
      const int result = i / kWidth, j = i % kWidth;
      const int pixel = result / channels, c = result % channels;
      order[i] =
          result < kOutputs && j < N
              ? static_cast<uint8_t>(pixel * N * channels +
                                     static_cast<int>(tapOffset<N, channels>(blockRow, j, c)))
              : 0x80;
    }
  }
};
template <int N, int channels, int blockRow>
constexpr Taps<N, channels> kTaps{blockRow};

template <int N, int channels, int blockRow>
VISTREL_INLINE Register tapSums(const uint8_t* s, size_t stride) {
  using Taps = Taps<N, channels>;
  Register v = loadGroups(s + blockRow * stride, Taps::kSource);
  if constexpr (!Taps::kRegular) v = permute(v, kTaps<N, channels, blockRow>.order);
  v = pairSums8(v);
  if constexpr (blockRow + 1 < N) return add16(v, tapSums<N, channels, blockRow + 1>(s, stride));
  return v;
}

// The block means of all groups, as 16-bit values below 32768; for blocks of 3 and 4 in the even
// elements.
template <int N, int channels>
VISTREL_INLINE Register blockMeans(const uint8_t* s, size_t stride) {
  const Register sums = tapSums<N, channels, 0>(s, stride);
  if constexpr (N == 2) return shiftRight16<1>(sums);
  const Register whole = pairSums16(sums);
  if constexpr (N == 4) return shiftRight32<2>(whole);
  return thirds32(whole);
}

template <int N>
VISTREL_INLINE void storeOutputs(uint8_t* d, Group means) {
  std::memcpy(d, &means, N == 2 ? 8 : 4);
}

// Computes results from the start of the row, as many as it can without touching a byte beyond
// either row. Returns the number of pixels.
template <int N, int channels>
VISTREL_INLINE size_t binBlocks8(const uint8_t* s, size_t stride, uint8_t* d, size_t width) {
  using Taps = Taps<N, channels>;
  constexpr size_t perGroup = Taps::kOutputs;
  const size_t sourceBytes = N * channels * width, outputs = channels * width;
  size_t done = 0;
  while ((done + (kGroups - 1) * perGroup) * N + 16 <= sourceBytes &&
         done + (kGroups - 1) * perGroup + 8 <= outputs) {
    Register means = blockMeans<N, channels>(s + done * N, stride);
    if constexpr (N != 2) means = pack32(means, means);
    means = pack16(means, means);
    for (int g = 0; g < kGroups; ++g) storeOutputs<N>(d + done + g * perGroup, group(means, g));
    done += kGroups * perGroup;
  }
  return done / channels;
}

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
