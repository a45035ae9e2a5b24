// The natural cubic spline, found another way than the library's: the tridiagonal system by
// forward elimination, the curve as a sum of cubes at both ends of a segment.
#pragma once

#include <cstddef>
#include <vector>

namespace vistrel::test {

class NaturalSpline {
 public:
  NaturalSpline(std::vector<double> x, std::vector<double> y)
      : m_x(std::move(x)), m_y(std::move(y)), m_second(m_x.size()) {
    const size_t n = m_x.size();
    std::vector<double> diagonal(n), right(n);
    for (size_t k = 1; k + 1 < n; ++k) {
      diagonal[k] = 2 * (m_x[k + 1] - m_x[k - 1]);
      right[k] = 6 * (slope(k) - slope(k - 1));
      if (k == 1) continue;
      const double factor = h(k - 1) / diagonal[k - 1];
      diagonal[k] -= factor * h(k - 1);
      right[k] -= factor * right[k - 1];
    }
    for (size_t k = n - 2; k > 0; --k)
      m_second[k] = (right[k] - h(k) * m_second[k + 1]) / diagonal[k];
  }

  double second(size_t k) const { return m_second[k]; }

  // At x, by the cubic of segment k.
  double at(size_t k, double x) const {
    const double left = x - m_x[k], right = m_x[k + 1] - x, width = h(k);
    return (m_second[k] * right * right * right + m_second[k + 1] * left * left * left) /
               (6 * width) +
           (m_y[k] / width - m_second[k] * width / 6) * right +
           (m_y[k + 1] / width - m_second[k + 1] * width / 6) * left;
  }

 private:
  double h(size_t k) const { return m_x[k + 1] - m_x[k]; }
  double slope(size_t k) const { return (m_y[k + 1] - m_y[k]) / h(k); }

  std::vector<double> m_x, m_y, m_second;
};

}  // namespace vistrel::test
