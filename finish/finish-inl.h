// Finishes a tile of pixels at a time, channels apart.
#if defined(VISTREL_FINISH_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_FINISH_INL_H
#undef VISTREL_FINISH_INL_H
#else
#define VISTREL_FINISH_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "finish/finish_rows.h"
#include "output/planes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

constexpr size_t kFinishTile = 256;
using FinishTile = uint16_t[3][kFinishTile];

inline void separateChannels(const uint16_t* pixels, size_t n, FinishTile& tile) {
  using Block = Planes<uint16_t>;
  size_t i = 0;
  for (; i + Block::kUnits <= n; i += Block::kUnits) {
    const uint8_t* const from[] = {reinterpret_cast<const uint8_t*>(pixels + 3 * i)};
    uint8_t* const to[] = {reinterpret_cast<uint8_t*>(tile[0] + i),
                           reinterpret_cast<uint8_t*>(tile[1] + i),
                           reinterpret_cast<uint8_t*>(tile[2] + i)};
    Block::convert(from, to);
  }
  for (; i < n; ++i)
    for (size_t c = 0; c < 3; ++c) tile[c][i] = pixels[3 * i + c];
}

// Samples of `bits` bits in 16.
class In16Bits {
 public:
  explicit In16Bits(uint32_t bits) : up_(16 - bits), down_(2 * bits - 16) {}
  VISTREL_INLINE int32_t operator()(uint32_t v) const {
    return static_cast<int32_t>((v << up_ | v >> down_) & 0xFFFF);
  }

 private:
  uint32_t up_, down_;
};

// How much a channel clips, in 1/256: 256 a / h, rounded down, for integers a <= h < 4096. Half a
// step more lies 1/8192 or more from the next integer, which exceeds the error of the product.
class Clipping {
 public:
  explicit Clipping(int32_t clip)
      : height_(clip >> 4), start_(height_ ? clip - height_ : 65536),
        steps_(256 / static_cast<float>(height_ ? height_ : 1)) {}

  VISTREL_INLINE int32_t of(int32_t v) const {
    const int32_t above = smaller(larger(v - start_, 0), height_);
    return static_cast<int32_t>((static_cast<float>(above) + 0.5f / 256) * steps_);
  }

 private:
  int32_t height_, start_;
  float steps_;
};

VISTREL_INLINE int32_t matrixRow(const int32_t* m, int32_t a, int32_t b, int32_t c) {
  const int32_t v = (m[0] * a + m[1] * b + m[2] * c + 2048) >> 12;
  return smaller(larger(v, 0), 65535);
}

// t: in 1/256.
VISTREL_INLINE int32_t faded(int32_t v, int32_t to, int32_t t) {
  return v + (((to - v) * t + 128) >> 8);
}

// Clipped channels are estimated from the others, as in Zhang and Brainard, "Estimation of
// saturated pixel values in digital color imaging" (2004), but without statistics of the scene.
template <bool estimates, bool mixes>
void finishColours(const Finish& how, size_t n, uint16_t* __restrict x, uint16_t* __restrict y,
                   uint16_t* __restrict z) {
  const In16Bits in16Bits(how.bits);
  const Clipping first(how.clip[0]), second(how.clip[1]), third(how.clip[2]);
  const std::array<int32_t, 9> m = how.matrix;
  for (size_t i = 0; i < n; ++i) {
    int32_t a = in16Bits(x[i]), b = in16Bits(y[i]), c = in16Bits(z[i]);
    if constexpr (estimates) {
      const int32_t ta = first.of(a), tb = second.of(b), tc = third.of(c);
      const int32_t most = larger(larger(a, b), c);
      const int32_t least =
          smaller(smaller(faded(a, most, ta), faded(b, most, tb)), faded(c, most, tc));
      const int32_t middle = (least + most + 1) >> 1;
      a = faded(a, larger(a, middle), ta);
      b = faded(b, larger(b, middle), tb);
      c = faded(c, larger(c, middle), tc);
    }
    x[i] = static_cast<uint16_t>(mixes ? matrixRow(&m[0], a, b, c) : a);
    y[i] = static_cast<uint16_t>(mixes ? matrixRow(&m[3], a, b, c) : b);
    z[i] = static_cast<uint16_t>(mixes ? matrixRow(&m[6], a, b, c) : c);
  }
}

// Few tiles have highlights.
inline bool hasHighlights(const Finish& how, size_t n, const FinishTile& tile) {
  for (size_t c = 0; c < 3; ++c) {
    uint16_t most = 0;
    for (size_t i = 0; i < n; ++i) most = larger(most, tile[c][i]);
    if (Clipping(how.clip[c]).of(In16Bits(how.bits)(most))) return true;
  }
  return false;
}

inline void finishTile(const Finish& how, size_t n, FinishTile& tile) {
  using Kernel = void(const Finish&, size_t, uint16_t*, uint16_t*, uint16_t*);
  constexpr Kernel* kKernels[2][2] = {{finishColours<false, false>, finishColours<false, true>},
                                      {finishColours<true, false>, finishColours<true, true>}};
  Kernel* const finish = kKernels[hasHighlights(how, n, tile)][how.hasMatrix];
  finish(how, n, tile[0], tile[1], tile[2]);
}

template <class T>
void finishPixels(const uint16_t* pixels, size_t n, const Finish& how, T* result) {
  const T* const table = static_cast<const T*>(how.table);
  FinishTile tile;
  for (size_t done = 0; done < n; done += kFinishTile) {
    const size_t count = smaller(n - done, kFinishTile);
    separateChannels(pixels + 3 * done, count, tile);
    finishTile(how, count, tile);
    T* const to = result + 3 * done;
    for (size_t i = 0; i < count; ++i)
      for (size_t c = 0; c < 3; ++c) to[3 * i + c] = table[tile[c][i]];
  }
}

// Of one channel.
template <class T>
void finishSamples(const uint16_t* samples, size_t n, const Finish& how, T* result) {
  const In16Bits in16Bits(how.bits);
  const T* const table = static_cast<const T*>(how.table);
  for (size_t i = 0; i < n; ++i) result[i] = table[in16Bits(samples[i])];
}

template <class T>
void finishInto(const uint16_t* pixels, size_t n, const Finish& how, T* result) {
  how.channels == 3 ? finishPixels(pixels, n, how, result) : finishSamples(pixels, n, how, result);
}

inline void finishRow(const uint16_t* pixels, size_t n, const Finish& how, void* result) {
  how.sampleBytes == 2 ? finishInto(pixels, n, how, static_cast<uint16_t*>(result))
                       : finishInto(pixels, n, how, static_cast<uint8_t*>(result));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
