// The library gives the same bits as the plain functions, for random arguments.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "tests/reference/curves.h"
#include "vistrel/solvers.h"
#include "vistrel/tone_curves.h"

namespace vistrel::core::test {
namespace {

constexpr int kCases = 2000;

class Draw {
 public:
  explicit Draw(unsigned seed) : engine_(seed) {}
  int integer(int from, int to) { return std::uniform_int_distribution(from, to)(engine_); }

  // Includes small integers, so that ties, zeros and equal rows occur.
  std::vector<double> numbers(size_t count) {
    std::vector<double> values(count);
    const bool small = integer(0, 1) != 0;
    for (double& v : values)
      v = small ? integer(-2, 2) : std::uniform_real_distribution(-100.0, 100.0)(engine_);
    return values;
  }

 private:
  std::mt19937 engine_;
};

template <class T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

TEST(SameAsPlain, DecompositionAndSolution) {
  Draw draw(1);
  for (int i = 0; i < kCases; ++i) {
    const int n = draw.integer(1, 8);
    std::vector<double> a = draw.numbers(n * n), b = draw.numbers(n), a2 = a, b2 = b;
    std::vector<int> index(n, -1), index2(n, -1);
    int flag = 7, flag2 = 7;
    const int result = LUDecomp(a.data(), n, index.data(), &flag);
    ASSERT_EQ(result, reference::LUDecomp(a2.data(), n, index2.data(), &flag2)) << i;
    ASSERT_EQ(flag, flag2) << i;
    ASSERT_EQ(index, index2) << i;
    ASSERT_TRUE(sameBits(a, a2)) << i;
    if (result == 0) continue;
    LUSolve(a.data(), n, index.data(), b.data());
    reference::LUSolve(a2.data(), n, index2.data(), b2.data());
    ASSERT_TRUE(sameBits(b, b2)) << i;
  }
}

using Fit = int (*)(double*, double*, double*);

void compareFits(Fit fit, Fit plain, size_t points, size_t coefficients) {
  Draw draw(2);
  for (int i = 0; i < kCases; ++i) {
    std::vector<double> x = draw.numbers(points), y = draw.numbers(points);
    std::vector<double> c(coefficients, 5), c2 = c;
    ASSERT_EQ(fit(x.data(), y.data(), c.data()), plain(x.data(), y.data(), c2.data())) << i;
    for (size_t k = 0; k < coefficients; ++k)  // the sign of a NaN is unspecified
      ASSERT_TRUE(c[k] == c2[k] || (c[k] != c[k] && c2[k] != c2[k])) << i;
  }
}

TEST(SameAsPlain, Fits) {
  compareFits(Resolve4thOrderPolynomium, reference::Resolve4thOrderPolynomium, 5, 5);
  compareFits(Resolve4thOrderSpline, reference::Resolve4thOrderSpline, 5, 16);
  compareFits(Resolve5thOrderSpline, reference::Resolve5thOrderSpline, 6, 20);
}

TEST(SameAsPlain, Inverse) {
  Draw draw(3);
  for (int i = 0; i < kCases; ++i) {
    std::vector<double> m = draw.numbers(16), out(16, 5), out2 = out;
    ASSERT_EQ(Invert4x4Matrix(m.data(), out.data()),
              reference::Invert4x4Matrix(m.data(), out2.data()));
    ASSERT_TRUE(sameBits(out, out2)) << i;
  }
}

TEST(SameAsPlain, PredefinedCurves) {
  Draw draw(4);
  for (int nCurve = -1; nCurve <= 8; ++nCurve)
    for (int nInBits = 0; nInBits <= 16; ++nInBits)
      for (int nOutBits : {1, 4, 7, 8, 9, 10, 12, 16, nInBits, nInBits - 32, nInBits + 5}) {
        std::vector<unsigned short> table(size_t{1} << nInBits);
        for (unsigned short& entry : table)
          entry = static_cast<unsigned short>(draw.integer(0, 65535));
        std::vector<unsigned short> plain = table;
        GeneratePredefinedLut(nCurve, nInBits, nOutBits, table.data());
        reference::GeneratePredefinedLut(nCurve, nInBits, nOutBits, plain.data());
        ASSERT_TRUE(sameBits(table, plain)) << nCurve << ", " << nInBits << ", " << nOutBits;
      }
}

TEST(SameAsPlain, GammaTables) {
  Draw draw(5);
  for (int i = 0; i < kCases / 4; ++i) {
    const int nInBits = draw.integer(0, 14), nOutBits = draw.integer(0, 16);
    const int low = draw.integer(-5, 40), high = draw.integer(-5, 40);
    const int start = draw.integer(-10, 1 << nInBits), end = draw.integer(-10, 1 << nInBits);
    std::vector<unsigned short> table(size_t{1} << nInBits, 5), plain = table;
    GenerateGammaLut(low, high, start, end, nInBits, nOutBits, table.data());
    reference::GenerateGammaLut(low, high, start, end, nInBits, nOutBits, plain.data());
    ASSERT_TRUE(sameBits(table, plain)) << i;
  }
}

}  // namespace
}  // namespace vistrel::core::test
