// The natural cubic spline, computed in another way than the library's: it solves the tridiagonal
// system by forward elimination, and the curve is a sum of cubes at both ends of a segment.
#pragma once

#include <cstddef>
#include <vector>

namespace vistrel::core::test {

class NaturalSpline {
 public:
  NaturalSpline(std::vector<double> x, std::vector<double> y)
      : x_(std::move(x)), y_(std::move(y)), second_(x_.size()) {
    const size_t n = x_.size();
    std::vector<double> diagonal(n), right(n);
    for (size_t k = 1; k + 1 < n; ++k) {
      diagonal[k] = 2 * (x_[k + 1] - x_[k - 1]);
      right[k] = 6 * (slope(k) - slope(k - 1));
      if (k == 1) continue;
      const double factor = h(k - 1) / diagonal[k - 1];
      diagonal[k] -= factor * h(k - 1);
      right[k] -= factor * right[k - 1];
    }
    for (size_t k = n - 2; k > 0; --k)
      second_[k] = (right[k] - h(k) * second_[k + 1]) / diagonal[k];
  }

  double second(size_t k) const { return second_[k]; }

  // The value at x, by the cubic of segment k.
  double at(size_t k, double x) const {
    const double left = x - x_[k], right = x_[k + 1] - x, width = h(k);
    return (second_[k] * right * right * right + second_[k + 1] * left * left * left) /
               (6 * width) +
           (y_[k] / width - second_[k] * width / 6) * right +
           (y_[k + 1] / width - second_[k + 1] * width / 6) * left;
  }

 private:
  double h(size_t k) const { return x_[k + 1] - x_[k]; }
  double slope(size_t k) const { return (y_[k + 1] - y_[k]) / h(k); }

  std::vector<double> x_, y_, second_;
};

}  // namespace vistrel::core::test
