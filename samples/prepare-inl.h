// Prepares rows of raw samples a vector at a time, in 16-bit lanes where these suffice.
#if defined(VISTREL_PREPARE_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PREPARE_INL_H
#undef VISTREL_PREPARE_INL_H
#else
#define VISTREL_PREPARE_INL_H
#endif

#include "common/simd/products-inl.h"
#include "samples/columns-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Ways to apply a gain to a value above black. factor(gain) is the factor of times().

struct Unamplified {
  explicit Unamplified(const Preparation&) {}
  uint32_t factor(uint32_t) const { return 0; }
  template <class V>
  VISTREL_INLINE V times(V v, V) const {
    return v;
  }
};

// For at most 12 bits and gains below 8: v * gain / 2^12 is 8 * v * gain / 2^15.
struct Amplified12 {
  explicit Amplified12(const Preparation&) {}
  uint32_t factor(uint32_t gain) const { return gain; }
  static bool suits(const Preparation& how) {
    return how.bits <= 12 && how.gain.even < 8 * kGainOne && how.gain.odd < 8 * kGainOne;
  }
  VISTREL_INLINE Vec<uint16_t> times(Vec<uint16_t> v, Vec<uint16_t> gain) const {
    using Signed = Vec<int16_t>;
    return as<Vec<uint16_t>>(roundedProduct(as<Signed>(v << 3), as<Signed>(gain)));
  }
};

// In 16 bits. v * gain / 2^12 is 16 * v * gain / 2^16: the upper half of the product, rounded by
// the highest bit of the lower half. A value of b bits takes 16 - b of the four bits of the factor
// 16, and the gain takes b - 12. Values of fewer than 12 bits count as 12.
struct Amplified16 {
  static constexpr uint32_t kMaxFactor = 0xFFFF;

  explicit Amplified16(const Preparation& how) : bits(how.bits > 12 ? how.bits : 12) {}

  // A gain of 65536 does not fit. The next smaller one gives a different result only for values
  // above 2048, where both results exceed the full scale of 12 bits.
  uint32_t factor(uint32_t gain) const {
    const uint32_t factor = gain << (bits - 12);
    return factor < kMaxFactor ? factor : kMaxFactor;
  }
  static bool suits(const Preparation& how) {
    const uint32_t gain = how.gain.even > how.gain.odd ? how.gain.even : how.gain.odd;
    return how.bits <= 12 || gain << (how.bits - 12) <= kMaxFactor;
  }
  VISTREL_INLINE Vec<uint16_t> times(Vec<uint16_t> v, Vec<uint16_t> factor) const {
    const Vec<uint16_t> moved = v << static_cast<uint16_t>(16 - bits);
    return upperProduct(moved, factor) + (moved * factor >> 15);
  }

  uint32_t bits;
};

// In 32 bits, which never overflow: 65535 * 65536 + 2048 < 2^32.
struct Amplified32 {
  explicit Amplified32(const Preparation&) {}
  uint32_t factor(uint32_t gain) const { return gain; }
  VISTREL_INLINE Vec<uint32_t> times(Vec<uint32_t> v, Vec<uint32_t> gain) const {
    return (v * gain + kGainOne / 2) >> 12;
  }
};

template <class Columns, class Amplification>
class Prepared {
  using Scalar = typename Columns::Scalar;
  using Value = typename Columns::Value;

 public:
  explicit Prepared(const Preparation& how)
      : aboveBlack_(how), amplification_(how),
        fullScale_(Value{} + static_cast<Scalar>(how.fullScale())),
        dropped_(static_cast<Scalar>(how.dropped)) {
    const ColumnPair<uint32_t> factors{amplification_.factor(how.gain.even),
                                       amplification_.factor(how.gain.odd)};
    for (size_t p = 0; p < Columns::kParts; ++p) factor_[p] = Columns::constant(factors, p);
  }

  template <class V>
  VISTREL_INLINE V operator()(V samples) const {
    Value parts[Columns::kParts];
    for (size_t p = 0; p < Columns::kParts; ++p) {
      const Value v = amplification_.times(aboveBlack_(samples, p), factor_[p]);
      parts[p] = smaller(v, fullScale_) >> madeHere(dropped_);
    }
    return Columns::join(parts);
  }

 private:
  AboveBlack<Columns> aboveBlack_;
  Amplification amplification_;
  Value factor_[Columns::kParts], fullScale_;
  Scalar dropped_;
};

template <class T, class Columns, class Amplification>
void prepareBy(const void* from, size_t n, T* to, const Preparation& how) {
  const Prepared<Columns, Amplification> prepared(how);
  size_t i = 0;
  for (; i + kLanes<T> <= n; i += kLanes<T>) store(to + i, prepared(loadAt<T>(from, i)));
  if (i == n) return;
  const Vec<T> last = prepared(loadLast<T>(from, i, n));
  std::memcpy(to + i, &last, (n - i) * sizeof(T));
}

// The fastest exact way.
template <class T>
void prepareRow(const void* from, size_t n, T* to, const Preparation& how) {
  if (how.gain.even == kGainOne && how.gain.odd == kGainOne)
    prepareBy<T, Columns16<T>, Unamplified>(from, n, to, how);
  else if (Amplified12::suits(how))
    prepareBy<T, Columns16<T>, Amplified12>(from, n, to, how);
  else if (sizeof(T) == 1 || Amplified16::suits(how))
    prepareBy<T, Columns16<T>, Amplified16>(from, n, to, how);
  else if constexpr (sizeof(T) == 2)
    prepareBy<T, ColumnsApart<T>, Amplified32>(from, n, to, how);
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
