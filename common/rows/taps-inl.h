// Formulas read their neighbours through taps: m(dx, dy) is a vector of the samples dx columns to
// the right of and dy rows below a vector of sites. These sites have one column parity and begin at
// element k of a half row. A loader decides in what form the samples are loaded.
#if defined(VISTREL_TAPS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_TAPS_INL_H
#undef VISTREL_TAPS_INL_H
#else
#define VISTREL_TAPS_INL_H
#endif

#include "common/rows/half_rows.h"
#include "common/simd/widen-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

struct LoadSamples {
  template <class T>
  VISTREL_INLINE Vec<T> operator()(const T* p) const {
    return load(p);
  }
};

// Loads one part of widened values; see widen-inl.h.
template <class Values>
struct LoadPart {
  size_t part = 0;

  VISTREL_INLINE typename Values::Value operator()(const typename Values::Sample* p) const {
    return Values::load(p, part);
  }
};

template <class T, int reach, int parity, class Loader = LoadSamples>
class Tap {
 public:
  template <class Index>
  VISTREL_INLINE Tap(const HalfRowWindow<T, reach>& window, Index k, Loader loader = {})
      : window_(window), k_(static_cast<ptrdiff_t>(k)), loader_(loader) {}

  VISTREL_INLINE auto operator()(int dx, int dy) const {
    const int column = parity + dx;
    return loader_(window_.half[dy + reach][column & 1] + k_ + (column >> 1));
  }

 private:
  const HalfRowWindow<T, reach>& window_;
  ptrdiff_t k_;
  Loader loader_;
};

template <class Values, int reach, int parity>
using ValueTap = Tap<typename Values::Sample, reach, parity, LoadPart<Values>>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
