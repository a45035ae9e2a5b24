// Weighted filters: nine taps with weights, and a divisor.
#if defined(VISTREL_WEIGHTED_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_WEIGHTED_INL_H
#undef VISTREL_WEIGHTED_INL_H
#else
#define VISTREL_WEIGHTED_INL_H
#endif

#include <algorithm>
#include <bit>

#include "common/depth.h"
#include "common/simd/products-inl.h"
#include "common/simd/registers-inl.h"
#include "common/simd/widen-inl.h"
#include "vistrel/vistrel.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

using U16 = Vec<uint16_t>;
using U32 = Vec<uint32_t>;
using I16 = Vec<int16_t>;
using I32 = Vec<int32_t>;

// The bits below a place of wider lanes: every second sample's, or every fourth.
template <class Lane, class T>
constexpr int bitsBelow(int place) {
  constexpr int places = sizeof(Lane) / sizeof(T), bits = 8 * sizeof(T);
  return bits * (kFirstIsLow ? place : places - 1 - place);
}

// Zero-extends the samples at such a place.
template <class Lane, class T>
VISTREL_INLINE Vec<Lane> samplesAt(int place, const T* p) {
  constexpr int highest = 8 * (sizeof(Lane) - sizeof(T));
  const int below = bitsBelow<Lane, T>(place);
  const Vec<Lane> lanes = as<Vec<Lane>>(load(p)) >> madeHere(below);
  return below == highest ? lanes : lanes & static_cast<T>(-1);
}

// Quotients of 16-bit sums, limited to 0..255: n / d = n * ceil(2^(15 + s) / d) >> (15 + s) for all
// n < 2^15, where 2^s is the power of two at or above d.
class Quotient16 {
 public:
  typedef uint16_t Lane;
  explicit Quotient16(int32_t divisor) {
    // Sums are below 2^15, so this divisor gives zero, as any larger one does.
    const uint32_t d = std::min<uint32_t>(divisor, 1 << 15);
    shift_ = std::bit_width(d - 1);
    const auto multiplier = static_cast<uint16_t>(((uint32_t{1} << (15 + shift_)) + d - 1) / d);
    multiplier_ = U16{} + multiplier;
  }
  template <int limit>
  VISTREL_INLINE U16 of(U16 sum) const {
    const U16 n = as<U16>(larger(as<I16>(sum), I16{}));
    const U16 q = upperProduct(n + n, multiplier_) >> madeHere(shift_);
    return as<U16>(smaller(as<I16>(q), I16{} + int16_t{limit}));
  }

 private:
  int shift_;
  U16 multiplier_;
};

// Quotients of any sum by any divisor. Half is added to the sum (subtracted for a negative
// divisor), so that it is at least a half away from every multiple of the divisor. The rounding of
// the reciprocal and of the product cannot carry it that far.
class Quotient32 {
 public:
  typedef uint32_t Lane;
  explicit Quotient32(int32_t divisor)
      : reciprocal_(1.0 / divisor), half_(divisor < 0 ? -0.5 : 0.5) {}

  template <int limit>
  VISTREL_INLINE U32 of(U32 sum) const {
    const Doubles n = toDoubles(as<I32>(sum));
    const auto q = toIntegers((n + half_) * reciprocal_);
    return as<U32>(clampTo(q, limit));
  }

 private:
  double reciprocal_, half_;
};

// The weighted sums of nine taps, wrapping in a lane.
template <class T, class Lane>
class Sums {
 public:
  explicit Sums(const int32_t (&weights)[9]) {
    for (int i = 0; i < 9; ++i) weights_[i] = Vec<Lane>{} + static_cast<Lane>(weights[i]);
  }
  VISTREL_INLINE Vec<Lane> at(const T* const* taps, size_t x, int place) const {
    Vec<Lane> sum{};
    for (int i = 0; i < 9; ++i) sum += weights_[i] * samplesAt<Lane>(place, taps[i] + x);
    return sum;
  }

 private:
  Vec<Lane> weights_[9];
};

// The weighted sums of 16-bit samples with 16-bit weights, if the taps of a row are neighbours:
// sums of pairs of products, without widening. The products are signed, so half of the samples'
// range is subtracted from them first. A pair reaches one sample beyond a row of odd length.
class PairSums {
 public:
  explicit PairSums(const int32_t (&weights)[9]) {
    uint32_t all = 0;
    for (int row = 0; row < 3; ++row) {
      const int32_t* const w = weights + 3 * row;
      const uint32_t left = static_cast<uint16_t>(w[0]), right = static_cast<uint16_t>(w[2]);
      left_[row] += pairOf(left, static_cast<uint16_t>(w[1]));
      right_[row][0] += pairOf(right, 0);
      right_[row][1] += pairOf(0, right);
      for (int i = 0; i < 3; ++i) all += static_cast<uint32_t>(w[i]);
    }
    taken_ += all << 15;
  }
  VISTREL_INLINE U32 at(const uint16_t* const* taps, size_t x, int place) const {
    U32 sum = taken_;
    for (int row = 0; row < 3; ++row)
      sum += pairProducts(load(taps[3 * row + place] + x), left_[row]) +
             pairProducts(load(taps[3 * row + 2] + x), right_[row][place]);
    return sum;
  }

 private:
  VISTREL_INLINE static U32 pairProducts(U16 samples, U32 weights) {
    const auto s = samples ^ 0x8000;
#if VISTREL_AVX512
    return as<U32>(_mm512_madd_epi16(as<__m512i>(s), as<__m512i>(weights)));
#elif VISTREL_AVX2
    return as<U32>(_mm256_madd_epi16(as<__m256i>(s), as<__m256i>(weights)));
#elif VISTREL_X86
    return as<U32>(_mm_madd_epi16(as<__m128i>(s), as<__m128i>(weights)));
#elif VISTREL_NEON || VISTREL_WASM
    return as<U32>(pairProducts16(as<Register>(s), as<Register>(weights)));
#else
    const auto a = as<I32>(s), b = as<I32>(weights);
    return as<U32>(((a << 16) >> 16) * ((b << 16) >> 16)) + as<U32>((a >> 16) * (b >> 16));
#endif
  }

  U32 left_[3]{}, right_[3][2]{}, taken_{};
};

// A filter of nine weighted taps.
template <class T, class Sums, class Quotient>
class Weighted {
 public:
  static constexpr size_t kTaps = 9;
  explicit Weighted(const _FLT_3X3& filter) : sums_(filter.anWeights), quotient_(filter.nDivisor) {}

  VISTREL_INLINE Vec<T> at(const T* const* taps, size_t x) const {
    using Lane = typename Quotient::Lane;
    constexpr int places = kLanes<T> / kLanes<Lane>;
    Vec<Lane> result{};
    for (int place = 0; place < places; ++place)
      result |= quotient_.template of<kLimit<T>>(sums_.at(taps, x, place))
                << bitsBelow<Lane, T>(place);
    return as<Vec<T>>(result);
  }

 private:
  Sums sums_;
  Quotient quotient_;
};

template <class T>
using AnyWeights = Weighted<T, Sums<T, uint32_t>, Quotient32>;

// For weights that pass fitsFastPath().
template <class T>
using FastWeights =
    std::conditional_t<sizeof(T) == 1, Weighted<uint8_t, Sums<uint8_t, uint16_t>, Quotient16>,
                       Weighted<uint16_t, PairSums, Quotient32>>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
