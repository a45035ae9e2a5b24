// Vectors of samples of a row as values that depend on the parity of the column.
//
//   Value, kParts         the samples of a vector become kParts vectors of values
//   part(v, i), join      part i of a vector of samples; all parts as samples again
//   constant(pair, i)     the pair's values for even and odd columns, in the lanes of part i
#if defined(VISTREL_COLUMNS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_COLUMNS_INL_H
#undef VISTREL_COLUMNS_INL_H
#else
#define VISTREL_COLUMNS_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/registers-inl.h"
#include "common/simd/widen-inl.h"
#include "samples/prepare.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Lanes of twice the length: the even columns, then the odd ones.
template <class T>
struct ColumnsApart {
  using Scalar = std::make_unsigned_t<Widened<T>>;
  using Value = Vec<Scalar>;
  static constexpr size_t kParts = 2;

  VISTREL_INLINE static Value part(Vec<T> v, size_t i) { return as<Value>(EvenOdd<T>::part(v, i)); }
  VISTREL_INLINE static Vec<T> join(const Value (&parts)[2]) {
    return EvenOdd<T>::join({as<Vec<Widened<T>>>(parts[0]), as<Vec<Widened<T>>>(parts[1])});
  }
  VISTREL_INLINE static Value constant(ColumnPair<uint32_t> pair, size_t i) {
    const auto value = static_cast<Scalar>(i == 0 ? pair.even : pair.odd);
    return Value{} + value;
  }
};

// The lanes of 16-bit samples.
struct ColumnsTogether {
  using Scalar = uint16_t;
  using Value = Vec<uint16_t>;
  static constexpr size_t kParts = 1;

  VISTREL_INLINE static Value part(Value v, size_t) { return v; }
  VISTREL_INLINE static Value join(const Value (&parts)[1]) { return parts[0]; }
  VISTREL_INLINE static Value constant(ColumnPair<uint32_t> pair, size_t) {
    return as<Value>(Vec<uint32_t>{} + pairOf(pair.even, pair.odd));
  }
};

// The narrowest lanes that hold the upper half of a 16-bit product.
template <class T>
using Columns16 = std::conditional_t<sizeof(T) == 1, ColumnsApart<uint8_t>, ColumnsTogether>;

// a - b, or 0 if b is larger.
template <class V>
VISTREL_INLINE V saturatingDifference(V a, V b) {
  return larger(a, b) - b;
}
#if VISTREL_PERMUTES
VISTREL_INLINE Vec<uint16_t> saturatingDifference(Vec<uint16_t> a, Vec<uint16_t> b) {
#if VISTREL_AVX512
  return as<Vec<uint16_t>>(_mm512_subs_epu16(as<__m512i>(a), as<__m512i>(b)));
#elif VISTREL_NEON
  return as<Vec<uint16_t>>(vqsubq_u16(as<uint16x8_t>(a), as<uint16x8_t>(b)));
#else
  return as<Vec<uint16_t>>(VISTREL_OP(subs_epu16)(as<Register>(a), as<Register>(b)));
#endif
}
#endif

// The significant bits above the black level.
template <class Columns>
class AboveBlack {
  using Scalar = typename Columns::Scalar;
  using Value = typename Columns::Value;

 public:
  explicit AboveBlack(const Preparation& how)
      : mask_(static_cast<Scalar>(how.mask())), below_(static_cast<Scalar>(how.below)) {
    for (size_t p = 0; p < Columns::kParts; ++p) black_[p] = Columns::constant(how.black, p);
  }

  // Part p of a vector of samples.
  template <class V>
  VISTREL_INLINE Value operator()(V v, size_t p) const {
    const Value s = (Columns::part(v, p) & mask_) >> madeHere(below_);
    return saturatingDifference(s, black_[p]);
  }

 private:
  Scalar mask_, below_;
  Value black_[Columns::kParts];
};

// A vector of the samples of a row from sample i on, at any alignment.
template <class T>
VISTREL_INLINE Vec<T> loadAt(const void* row, size_t i) {
  Vec<T> v;
  std::memcpy(&v, static_cast<const char*>(row) + i * sizeof(T), sizeof v);
  return v;
}
// The same if the row's n samples end within it; zeros follow them.
template <class T>
VISTREL_INLINE Vec<T> loadLast(const void* row, size_t i, size_t n) {
  Vec<T> v{};
  std::memcpy(&v, static_cast<const char*>(row) + i * sizeof(T), (n - i) * sizeof(T));
  return v;
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
