// Floats and doubles in lanes. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/simd/reals_test.cpp"
#include <cmath>

#include "common/simd/each_level.h"
#include "tests/common/simd/elements.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Reals);

// Eighths, of both signs.
template <class Real>
std::vector<Real> eighths() {
  std::mt19937 random;
  std::vector<Real> reals;
  for (int16_t v : mixed<int16_t>(random)) reals.push_back(static_cast<Real>(v) / 8);
  return reals;
}

template <class Real>
void expectTruncated() {
  const std::vector<Real> in = eighths<Real>();
  std::vector<Real> out(in.size());
  VISTREL_BY_LEVEL(truncatedOf<Real>)(out.data(), out.size(), in.data());
  for (size_t i = 0; i < in.size(); ++i) ASSERT_EQ(out[i], std::trunc(in[i])) << in[i];
}

TEST_P(Reals, AreTruncatedTowardZero) {
  expectTruncated<float>();
  expectTruncated<double>();
}

TEST_P(Reals, HaveCorrectlyRoundedSquareRoots) {
  std::vector<double> in = eighths<double>(), out(in.size());
  for (double& v : in) v = std::abs(v);
  VISTREL_BY_LEVEL(squareRoots)(out.data(), out.size(), in.data());
  for (size_t i = 0; i < in.size(); ++i) ASSERT_EQ(out[i], std::sqrt(in[i])) << in[i];
  EXPECT_EQ(base::squareRoot(2.25), 1.5);
}

TEST_P(Reals, HaveReciprocalRootsOfAboutTwelveBits) {
  std::vector<float> in = eighths<float>(), out(in.size());
  for (float& v : in) v = std::abs(v) + 0.125f;
  VISTREL_BY_LEVEL(approximateRoots)(out.data(), out.size(), in.data());
  for (size_t i = 0; i < in.size(); ++i) {
    ASSERT_NEAR(out[i] * std::sqrt(double{in[i]}), 1, 1.5 / 4096) << in[i];
    ASSERT_EQ(out[i], base::approximateRoot(in[i])) << in[i];
  }
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/reals-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class Real>
void truncatedOf(Real* out, size_t n, const Real* v) {
  for (size_t k = 0; k < n; k += kLanes<Real>) store(out + k, truncated(load(v + k)));
}
inline void squareRoots(double* out, size_t n, const double* v) {
  for (size_t k = 0; k < n; k += kLanes<double>) store(out + k, squareRoot(load(v + k)));
}
inline void approximateRoots(float* out, size_t n, const float* v) {
  for (size_t k = 0; k < n; k += kLanes<float>) store(out + k, approximateRoot(load(v + k)));
}

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
