// The row kernels of the filters. A filter reads taps, each a pointer to the sample for the row's
// first result, and computes a vector of results at a time.
#if defined(VISTREL_FILTER_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_FILTER_ROWS_INL_H
#undef VISTREL_FILTER_ROWS_INL_H
#else
#define VISTREL_FILTER_ROWS_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "frontend/filter/filter_kernels.h"
#include "frontend/filter/weighted-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// The mean of 2x2 samples.
template <class T>
struct Box {
  static constexpr size_t kTaps = 4;

  VISTREL_INLINE Vec<T> at(const T* const* taps, size_t x) const {
    const Vec<T> mean =
        mean4(load(taps[0] + x), load(taps[1] + x), load(taps[2] + x), load(taps[3] + x));
    if constexpr (sizeof(T) == 1) return mean;
    return smaller(mean, Vec<T>{} + static_cast<T>(kLimit<T>));
  }
};

VISTREL_INLINE U16 fifthOf(U16 sum) { return upperProduct(sum, 0xCCCD) >> 2; }

// The mean of five samples. Even and odd columns have different taps: five each.
template <class T>
struct FiveTaps {
  static constexpr size_t kTaps = 10;

  VISTREL_INLINE Vec<T> at(const T* const* taps, size_t x) const {
    const T* const* const first = taps + 5 * (x & 1);  // the taps of columns x, x + 2 ...
    const T* const* const second = taps + 5 * (1 - (x & 1));
    if constexpr (sizeof(T) == 1) {
      constexpr int below[] = {bitsBelow<uint16_t, T>(0), bitsBelow<uint16_t, T>(1)};
      return as<Vec<T>>(mean(first, x, 0) << below[0] | mean(second, x, 1) << below[1]);
    } else {
      const U32 mask = U32{} + pairOf(0xFFFF, 0);
      return as<U16>((as<U32>(mean(first, x)) & mask) | (as<U32>(mean(second, x)) & ~mask));
    }
  }

 private:
  VISTREL_INLINE static U16 mean(const uint8_t* const* taps, size_t x, int place) {
    U16 sum = samplesAt<uint16_t>(place, taps[0] + x);
    for (int i = 1; i < 5; ++i) sum += samplesAt<uint16_t>(place, taps[i] + x);
    return fifthOf(sum);
  }
  // A sum that exceeds its lane becomes the lane's maximum, which is above the limit as well.
  VISTREL_INLINE static U16 mean(const uint16_t* const* taps, size_t x) {
    U16 sum = load(taps[0] + x);
    for (int i = 1; i < 5; ++i) {
      sum += load(taps[i] + x);
      sum |= as<U16>(sum < load(taps[i] + x));
    }
    return fifthOf(smaller(sum, U16{} + (5 * kLimit<uint16_t> + 4)));
  }
};

// Filters a row shorter than a vector, from copies of its taps.
template <class T, class Filter>
void filterFew(const Filter& filter, const T* const* taps, size_t n, T* d) {
  T row[Filter::kTaps][kLanes<T>] = {};
  const T* tap[Filter::kTaps];
  for (size_t i = 0; i < Filter::kTaps; ++i) {
    std::copy_n(taps[i], n, row[i]);
    tap[i] = row[i];
  }
  const Vec<T> few = filter.at(tap, 0);
  std::memcpy(d, &few, n * sizeof(T));
}

// The last vector ends with the row, so it overlaps the one before.
template <class T, class Filter>
void filterMany(const Filter& filter, const T* const* taps, size_t n, T* __restrict d) {
  const T* tap[Filter::kTaps];
  std::copy_n(taps, Filter::kTaps, tap);
  for (size_t x = 0; x < n - kLanes<T>; x += kLanes<T>) store(d + x, filter.at(tap, x));
  store(d + n - kLanes<T>, filter.at(tap, n - kLanes<T>));
}

template <class T, class Filter>
void fixedRow(const T* const* taps, size_t n, T* d) {
  n < kLanes<T> ? filterFew(Filter(), taps, n, d) : filterMany(Filter(), taps, n, d);
}

template <class T, class Filter>
void weightedRow(const _FLT_3X3& filter, const T* const* taps, size_t n, T* d) {
  n < kLanes<T> ? filterFew(AnyWeights<T>(filter), taps, n, d)
                : filterMany(Filter(filter), taps, n, d);
}

template <class T>
constexpr FilterKernels<T> kFilterKernels = {fixedRow<T, Box<T>>, fixedRow<T, FiveTaps<T>>,
                                             weightedRow<T, FastWeights<T>>,
                                             weightedRow<T, AnyWeights<T>>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
