// Scales samples in 32-bit lanes: the even columns of a vector, then its odd ones.
#if defined(VISTREL_SCALE_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_SCALE_INL_H
#undef VISTREL_SCALE_INL_H
#else
#define VISTREL_SCALE_INL_H
#endif

#include "samples/columns-inl.h"
#include "samples/scale.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

class ScaledColumns {
  using Columns = ColumnsApart<uint16_t>;
  using Value = Columns::Value;

 public:
  explicit ScaledColumns(const Scaling& how)
      : mask_(how.mask), below_(how.below), shift_(how.shift()), half_(1u << (shift_ - 1)),
        fullScale_(how.fullScale()) {
    for (size_t p = 0; p < 2; ++p) {
      black_[p] = Columns::constant(how.black, p);
      range_[p] = Columns::constant(how.range, p);
      factor_[p] = Columns::constant(how.factor, p);
    }
  }

  VISTREL_INLINE Vec<uint16_t> operator()(Vec<uint16_t> samples) const {
    return Columns::join({part(samples, 0), part(samples, 1)});
  }

 private:
  VISTREL_INLINE Value part(Vec<uint16_t> samples, size_t p) const {
    const Value s = (Columns::part(samples, p) & mask_) >> madeHere(below_);
    const Value v = smaller(Value(larger(s, black_[p]) - black_[p]), range_[p]);
    return smaller(Value((v * factor_[p] + half_) >> madeHere(shift_)),
                   Value(Value{} + fullScale_));
  }

  uint32_t mask_, below_, shift_, half_, fullScale_;
  Value black_[2], range_[2], factor_[2];
};

inline void scaleRow(const void* from, size_t n, uint16_t* to, const Scaling& how) {
  constexpr size_t step = kLanes<uint16_t>;
  const ScaledColumns scaled(how);
  size_t i = 0;
  for (; i + step <= n; i += step) store(to + i, scaled(loadAt<uint16_t>(from, i)));
  if (i == n) return;
  const Vec<uint16_t> last = scaled(loadLast<uint16_t>(from, i, n));
  std::memcpy(to + i, &last, (n - i) * sizeof(uint16_t));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
