// Samples beyond a frame: its own, mirrored about the first and last ones.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

// The column or row that i is mirrored to in a frame of n columns or rows, after any number of
// reflections. Its parity stays the same unless n is 1.
constexpr size_t mirrored(int64_t i, size_t n) {
  const auto size = static_cast<int64_t>(n);
  if (i >= 0 && i < size) return static_cast<size_t>(i);
  if (n == 1) return 0;
  if (i < 0 && -i < size) return static_cast<size_t>(-i);
  if (i >= size && i <= 2 * (size - 1)) return static_cast<size_t>(2 * (size - 1) - i);
  const int64_t period = 2 * (size - 1);
  i = (i % period + period) % period;
  return static_cast<size_t>(i < size ? i : period - i);
}

// Adds mirrored samples before and after the n samples of a row.
template <class T>
void mirrorEnds(T* row, size_t n, size_t left, size_t right) {
  const auto first = -static_cast<int64_t>(left);
  const auto size = static_cast<int64_t>(n), end = size + static_cast<int64_t>(right);
  for (int64_t i = first; i < 0; ++i) row[i] = row[mirrored(i, n)];
  for (int64_t i = size; i < end; ++i) row[i] = row[mirrored(i, n)];
}

}  // namespace vistrel::core
