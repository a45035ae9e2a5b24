#include "finish/fixed_point.h"

#include <array>
#include <bit>
#include <cmath>

namespace vistrel::core {
namespace {

// A product of fractions with 64 bits, rounded down.
constexpr uint64_t multiply(uint64_t a, uint64_t b) {
  return static_cast<uint64_t>(Uint128{a} * b >> 64);
}

// The sum of series[k] * x^k, by Horner's rule.
template <size_t n>
uint64_t sumOf(const std::array<uint64_t, n>& series, uint64_t x) {
  uint64_t sum = series[n - 1];
  for (size_t k = n - 1; k-- > 0;) sum = series[k] + multiply(x, sum);
  return sum;
}

constexpr uint64_t kLn2 = 0xB17217F7D1CF79AB;          // ln 2
constexpr uint64_t kHalfOfLog2E = 0xB8AA3B295C17F0BB;  // log2(e) / 2

// 1/3, 1/5, 1/7, ..., 1/39
constexpr auto kOddReciprocals = [] {
  std::array<uint64_t, 19> series{};
  for (size_t k = 0; k < series.size(); ++k)
    series[k] = static_cast<uint64_t>(kFixedOne / (2 * k + 3));
  return series;
}();

// 1/2!, 1/3!, ..., 1/18!
constexpr auto kFactorialReciprocals = [] {
  std::array<uint64_t, 17> series{};
  Fixed reciprocal = kFixedOne;
  for (size_t k = 0; k < series.size(); ++k) series[k] = static_cast<uint64_t>(reciprocal /= k + 2);
  return series;
}();

}  // namespace

// With x = 2^n m, 1 <= m < 2, and z = (m - 1) / (m + 1) < 1/3:
//
//   ln m = 2 (z + z^3/3 + z^5/5 + ...)     (Abramowitz and Stegun, 4.1.27)
//
// The terms after z^39/39 are less than 2^-68 in sum. Every step rounds down, so that ln m / 2
// falls short by less than 3 * 2^-64 and log2 m by less than 11 * 2^-64.
Fixed fixedLog2(uint64_t x) {
  constexpr uint64_t kUnit = uint64_t{1} << 62;
  const int n = 63 - std::countl_zero(x);
  const uint64_t m = x << (62 - n);
  const auto z = static_cast<uint64_t>((Uint128{m - kUnit} << 64) / (m + kUnit));
  const uint64_t square = multiply(z, z);
  const uint64_t half = z + multiply(multiply(z, square), sumOf(kOddReciprocals, square));
  return (Fixed{static_cast<uint64_t>(n)} << 64) + (Uint128{half} * kHalfOfLog2E >> 62);
}

// With x = n - f, 0 <= f < 1, and t = f ln 2:
//
//   2^f = 1 + t + t^2/2! + t^3/3! + ...    (Abramowitz and Stegun, 4.2.1)
//
// The terms after t^18/18! are less than 2^-66 in sum. Every step rounds down: t falls short by
// less than 2 * 2^-64, 2^f by less than 10 * 2^-64.
Fixed fixedExp2Minus(Fixed x) {
  const auto n = static_cast<uint64_t>((x + (kFixedOne - 1)) >> 64);
  if (n > 64) return 0;
  const uint64_t t = multiply(static_cast<uint64_t>(-x), kLn2);
  const uint64_t rest = multiply(multiply(t, t), sumOf(kFactorialReciprocals, t));
  return (kFixedOne + t + rest) >> n;
}

// A step of Newton's method from a root that is right to 50 bits never falls below the result.
uint64_t rootOf(Uint128 x) {
  if (!x) return 0;
  const auto estimate = static_cast<uint64_t>(std::sqrt(static_cast<double>(x)));
  auto root = static_cast<uint64_t>((estimate + x / estimate) / 2);
  while (Uint128{root} * root > x) --root;
  return root;
}

}  // namespace vistrel::core
