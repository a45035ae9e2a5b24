#if defined(VISTREL_SCAN_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_SCAN_INL_H
#undef VISTREL_SCAN_INL_H
#else
#define VISTREL_SCAN_INL_H
#endif

#include <algorithm>

#include "samples/columns-inl.h"
#include "samples/scan.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// All bits that any sample of a row has.
template <class T>
T bitsOf(const void* row, size_t n) {
  Vec<T> bits{};
  eachVector<T>(
      row, n, [&](Vec<T> v) __attribute__((always_inline)) { bits |= v; });
  T all = 0;
  for (size_t i = 0; i < kLanes<T>; ++i) all |= bits[i];
  return all;
}

// In lanes of twice the length, which hold the sum of so many samples.
template <class T>
constexpr size_t kMaxAddends = size_t{1} << 8 * sizeof(T);

template <class T>
ColumnPair<uint64_t> sumsAboveBlack(const void* row, size_t n, const Preparation& how) {
  using Columns = ColumnsApart<T>;
  const AboveBlack<Columns> aboveBlack(how);
  constexpr size_t block = kMaxAddends<T> * kLanes<T>;
  uint64_t sums[2] = {};
  for (size_t i = 0; i < n; i += block) {
    typename Columns::Value parts[2] = {};
    const auto add = [&](Vec<T> v) __attribute__((always_inline)) {
      for (size_t p = 0; p < 2; ++p) parts[p] += aboveBlack(v, p);
    };
    eachVector<T>(static_cast<const T*>(row) + i, std::min(n - i, block), add);
    for (size_t p = 0; p < 2; ++p)
      for (size_t k = 0; k < kLanes<T> / 2; ++k) sums[p] += parts[p][k];
  }
  return {sums[0], sums[1]};
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
