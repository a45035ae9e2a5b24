// Finishes a tile of pixels at a time: channels apart, in loops over 32-bit lanes.
#if defined(VISTREL_FINISH_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_FINISH_INL_H
#undef VISTREL_FINISH_INL_H
#else
#define VISTREL_FINISH_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "finish/finish_rows.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

constexpr size_t kFinishTile = 256;
using FinishChannel = int32_t[kFinishTile];

// Channels in 16 bits.
template <size_t channels>
VISTREL_INLINE void loadFinishTile(const uint16_t* pixels, size_t n, uint32_t bits,
                                   FinishChannel (&tile)[channels]) {
  const uint32_t up = 16 - bits, down = 2 * bits - 16;
  for (size_t i = 0; i < n; ++i)
    for (size_t c = 0; c < channels; ++c) {
      const uint32_t v = pixels[channels * i + c];
      tile[c][i] = static_cast<int32_t>((v << up | v >> down) & 0xFFFF);
    }
}

// How much a channel clips, in 1/256. The quotient of integers below 2^24 is exact.
class Clipping {
 public:
  explicit Clipping(int32_t clip)
      : height_(clip >> 4), start_(height_ ? clip - height_ : 65536),
        divisor_(static_cast<float>(height_ ? height_ : 1)) {}

  VISTREL_INLINE int32_t of(int32_t v) const {
    const int32_t above = smaller(larger(v - start_, 0), height_);
    return static_cast<int32_t>(static_cast<float>(above * 256) / divisor_);
  }

 private:
  int32_t height_, start_;
  float divisor_;
};

inline void fadeHighlights(const std::array<int32_t, 3>& clip, size_t n, FinishChannel (&tile)[3]) {
  const Clipping first(clip[0]), second(clip[1]), third(clip[2]);
  for (size_t i = 0; i < n; ++i) {
    const int32_t a = tile[0][i], b = tile[1][i], c = tile[2][i];
    const int32_t most = larger(larger(a, b), c);
    const int32_t t = larger(larger(first.of(a), second.of(b)), third.of(c));
    tile[0][i] = a + (((most - a) * t + 128) >> 8);
    tile[1][i] = b + (((most - b) * t + 128) >> 8);
    tile[2][i] = c + (((most - c) * t + 128) >> 8);
  }
}

VISTREL_INLINE int32_t matrixRow(const int32_t* m, int32_t a, int32_t b, int32_t c) {
  const int32_t v = (m[0] * a + m[1] * b + m[2] * c + 2048) >> 12;
  return smaller(larger(v, 0), 65535);
}

inline void applyMatrix(const std::array<int32_t, 9>& matrix, size_t n, FinishChannel (&tile)[3]) {
  const int32_t* const m = matrix.data();
  for (size_t i = 0; i < n; ++i) {
    const int32_t a = tile[0][i], b = tile[1][i], c = tile[2][i];
    tile[0][i] = matrixRow(m, a, b, c);
    tile[1][i] = matrixRow(m + 3, a, b, c);
    tile[2][i] = matrixRow(m + 6, a, b, c);
  }
}

template <class T, size_t channels>
VISTREL_INLINE void storeFinishTile(const FinishChannel (&tile)[channels], size_t n, const T* table,
                                    T* result) {
  for (size_t i = 0; i < n; ++i)
    for (size_t c = 0; c < channels; ++c) result[channels * i + c] = table[tile[c][i]];
}

template <class T, size_t channels>
void finishTiles(const uint16_t* pixels, size_t n, const Finish& how, T* result) {
  FinishChannel tile[channels];
  for (size_t done = 0; done < n; done += kFinishTile) {
    const size_t count = smaller(n - done, kFinishTile);
    loadFinishTile<channels>(pixels + channels * done, count, how.bits, tile);
    if constexpr (channels == 3) {
      if (how.clip[0] | how.clip[1] | how.clip[2]) fadeHighlights(how.clip, count, tile);
      if (how.hasMatrix) applyMatrix(how.matrix, count, tile);
    }
    storeFinishTile(tile, count, static_cast<const T*>(how.table), result + channels * done);
  }
}

template <class T>
void finishPixels(const uint16_t* pixels, size_t n, const Finish& how, void* result) {
  T* const to = static_cast<T*>(result);
  how.channels == 3 ? finishTiles<T, 3>(pixels, n, how, to) : finishTiles<T, 1>(pixels, n, how, to);
}

inline void finishRow(const uint16_t* pixels, size_t n, const Finish& how, void* result) {
  how.sampleBytes == 2 ? finishPixels<uint16_t>(pixels, n, how, result)
                       : finishPixels<uint8_t>(pixels, n, how, result);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
