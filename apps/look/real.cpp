#include "apps/look/real.h"

#include <cmath>

namespace vistrel::app {
namespace {

constexpr double kLn2 = 0.693147180559945309417;

}  // namespace

// 2 artanh((m - 1) / (m + 1)) = ln m. frexp and ldexp are exact.
double log2Of(double x) {
  int exponent;
  double m = std::frexp(x, &exponent);
  if (m < 0.7071) {
    m *= 2;
    --exponent;
  }
  const double t = (m - 1) / (m + 1), square = t * t;
  double sum = 0;
  for (int n = 15; n >= 1; n -= 2) sum = sum * square + 1.0 / n;
  return exponent + 2 * t * sum / kLn2;
}

double exp2Of(double x) {
  const double whole = std::floor(x), rest = (x - whole) * kLn2;
  double sum = 1;
  for (int n = 16; n >= 1; --n) sum = 1 + sum * rest / n;
  return std::ldexp(sum, static_cast<int>(whole));
}

}  // namespace vistrel::app
