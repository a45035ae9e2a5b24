#include "apps/colour/matrix3.h"

namespace vistrel::app {
namespace {

double magnitude(double v) { return v < 0 ? -v : v; }

double largestOf(const Matrix3& m) {
  double largest = 0;
  for (const double v : m)
    if (magnitude(v) > largest) largest = magnitude(v);
  return largest;
}

}  // namespace

Matrix3 diagonal(const Vector3& v) { return {v[0], 0, 0, 0, v[1], 0, 0, 0, v[2]}; }

Vector3 product(const Matrix3& a, const Vector3& v) {
  Vector3 result{};
  for (size_t i = 0; i < 3; ++i)
    result[i] = a[3 * i] * v[0] + a[3 * i + 1] * v[1] + a[3 * i + 2] * v[2];
  return result;
}

Matrix3 product(const Matrix3& a, const Matrix3& b) {
  Matrix3 result{};
  for (size_t j = 0; j < 3; ++j) {
    const Vector3 column = product(a, Vector3{b[j], b[3 + j], b[6 + j]});
    for (size_t i = 0; i < 3; ++i) result[3 * i + j] = column[i];
  }
  return result;
}

std::optional<Matrix3> inverse(const Matrix3& m) {
  const auto minor = [&m](size_t a, size_t b, size_t c, size_t d) {
    return m[a] * m[d] - m[b] * m[c];
  };
  const Matrix3 adjugate{minor(4, 5, 7, 8), minor(2, 1, 8, 7), minor(1, 2, 4, 5),
                         minor(5, 3, 8, 6), minor(0, 2, 6, 8), minor(2, 0, 5, 3),
                         minor(3, 4, 6, 7), minor(1, 0, 7, 6), minor(0, 1, 3, 4)};
  const double determinant = m[0] * adjugate[0] + m[1] * adjugate[3] + m[2] * adjugate[6];
  const double scale = largestOf(m);
  const double smallest = 1e-6 * scale * scale * scale;
  if (!(magnitude(determinant) > smallest)) return {};
  Matrix3 result = adjugate;
  for (double& v : result) v /= determinant;
  return result;
}

}  // namespace vistrel::app
