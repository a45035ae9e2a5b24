// Three-component colours and the matrices between them. Only + - * / on doubles, so that results
// are the same on every machine.
#pragma once

#include <array>
#include <optional>

namespace vistrel::app {

using Vector3 = std::array<double, 3>;
using Matrix3 = std::array<double, 9>;  // row by row

constexpr Matrix3 kIdentity{1, 0, 0, 0, 1, 0, 0, 0, 1};

Matrix3 diagonal(const Vector3& v);
Vector3 product(const Matrix3& a, const Vector3& v);
Matrix3 product(const Matrix3& a, const Matrix3& b);

// Nothing if the matrix is singular, or so nearly that its inverse would be noise.
std::optional<Matrix3> inverse(const Matrix3& m);

}  // namespace vistrel::app
