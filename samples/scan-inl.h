// Bits and sums of a row, a vector of samples at a time.
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

// All bits that are set in any sample of a row.
template <class T>
T bitsOf(const void* row, size_t n) {
  Vec<T> bits{};
  size_t i = 0;
  for (; i + kLanes<T> <= n; i += kLanes<T>) bits |= loadAt<T>(row, i);
  if (i < n) bits |= loadLast<T>(row, i, n);
  T all = 0;
  for (size_t k = 0; k < kLanes<T>; ++k) all = static_cast<T>(all | bits[k]);
  return all;
}

// A lane of twice the length holds the sum of 256 bytes, or of 65536 samples of 16 bits.
template <class T>
constexpr size_t kSamplesALane = size_t{1} << 8 * sizeof(T);

// Adds up a row's columns, of which the sums must fit such lanes.
template <class T>
void addColumns(const void* row, size_t n, const AboveBlack<ColumnsApart<T>>& aboveBlack,
                ColumnPair<uint64_t>& sums) {
  typename ColumnsApart<T>::Value even{}, odd{};
  const auto add = [&](Vec<T> v) {
    even += aboveBlack(v, 0);
    odd += aboveBlack(v, 1);
  };
  size_t i = 0;
  for (; i + kLanes<T> <= n; i += kLanes<T>) add(loadAt<T>(row, i));
  if (i < n) add(loadLast<T>(row, i, n));
  for (size_t k = 0; k < kLanes<T> / 2; ++k) {
    sums.even += even[k];
    sums.odd += odd[k];
  }
}

template <class T>
ColumnPair<uint64_t> sumsAboveBlack(const void* row, size_t n, const Preparation& how) {
  const AboveBlack<ColumnsApart<T>> aboveBlack(how);
  constexpr size_t part = kSamplesALane<T> * kLanes<T>;
  ColumnPair<uint64_t> sums{};
  for (size_t i = 0; i < n; i += part)
    addColumns<T>(static_cast<const char*>(row) + i * sizeof(T), std::min(n - i, part), aboveBlack,
                  sums);
  return sums;
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
