// The dense solver, and the inverse of a 4 by 4 matrix.
#include "vistrel/solvers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace vistrel::core::test {
namespace {

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsNan;
using ::testing::Pointwise;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double k2p54 = 18014398509481984.0;

struct Decomposition {
  std::vector<double> matrix;
  std::vector<int> index;
  int flag = 77;
  int result = 77;

  explicit Decomposition(std::vector<double> m)
      : matrix(std::move(m)),
        index(static_cast<size_t>(std::lround(std::sqrt(matrix.size()))), 77) {
    result = LUDecomp(matrix.data(), static_cast<int>(index.size()), index.data(), &flag);
  }
};

std::vector<double> identity(size_t n) {
  std::vector<double> m(n * n);
  for (size_t i = 0; i < n; ++i) m[i * n + i] = 1;
  return m;
}

// Solves with factors as they are, without a permutation.
std::vector<double> solved(std::vector<double> factors, std::vector<double> right) {
  std::vector<int> index(right.size());
  for (size_t i = 0; i < index.size(); ++i) index[i] = static_cast<int>(i);
  LUSolve(factors.data(), static_cast<int>(right.size()), index.data(), right.data());
  return right;
}

TEST(LUDecomp, LeavesTheIdentityAsItIs) {
  for (size_t n : {1u, 2u, 5u, 6u, 30u}) {
    const Decomposition d(identity(n));
    EXPECT_EQ(d.matrix, identity(n));
    EXPECT_EQ(d.result, 1);
    EXPECT_EQ(d.flag, 0);
    for (size_t i = 0; i < n; ++i) EXPECT_EQ(d.index[i], static_cast<int>(i));
  }
}

TEST(LUDecomp, RejectsARowOfZerosAndClearsTheFlag) {
  const Decomposition d({1, 2, 3, 0, 0, 0, 4, 5, 7});
  EXPECT_EQ(d.result, 0);
  EXPECT_EQ(d.flag, 0);
  EXPECT_THAT(d.matrix, ElementsAre(1, 2, 3, 0, 0, 0, 4, 5, 7));
  EXPECT_THAT(d.index, Each(77));
}

TEST(LUDecomp, AcceptsAMatrixWithoutRows) {
  for (int n : {0, -1, -30}) {
    double a = 3;
    int index = 77, flag = 77;
    EXPECT_EQ(LUDecomp(&a, n, &index, &flag), 1);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(index, 77);
    EXPECT_EQ(a, 3);
  }
}

TEST(LUDecomp, ReplacesTheZeroPivotOfTwoEqualRows) {
  const Decomposition d({1, 2, 1, 2});
  EXPECT_EQ(d.result, 1);
  EXPECT_EQ(d.flag, 1);
  EXPECT_THAT(d.matrix, ElementsAre(1, 2, 1, 1e-5));
}

TEST(LUDecomp, ReplacesPivotsOfAtMostAFixedSize) {
  for (double pivot : {1e-5, -1e-5, 1e-9, -1e-9, 1e-300}) {
    const Decomposition d({pivot});
    EXPECT_EQ(d.flag, 1) << pivot;
    EXPECT_THAT(d.matrix, ElementsAre(1e-5)) << pivot;
    EXPECT_EQ(d.result, 1) << pivot;
  }
  for (double pivot : {std::nextafter(1e-5, 1.0), -2e-5, 1.0}) {
    const Decomposition d({pivot});
    EXPECT_EQ(d.flag, 0) << pivot;
    EXPECT_THAT(d.matrix, ElementsAre(pivot));
  }
}

TEST(LUDecomp, GoesOnWithTheReplacedPivot) {
  const Decomposition d({0, 1, 0, 2});  // nothing but zeros in the first column
  EXPECT_THAT(d.matrix, ElementsAre(1e-5, 2, 0, 1));
  EXPECT_THAT(d.index, ElementsAre(1, 1));
  EXPECT_EQ(d.flag, 1);
  EXPECT_EQ(d.result, 1);
}

TEST(LUDecomp, TakesTheLastOfEqualPivots) {
  EXPECT_THAT(Decomposition({1, 0, 1, 1}).index, ElementsAre(1, 1));
  EXPECT_THAT(Decomposition({1, 0, 0, 1, 1, 0, -1, 0, 1}).index[0], 2);
}

TEST(LUDecomp, ComparesPivotsByTheScaleOfTheirRows) {
  EXPECT_THAT(Decomposition({10, 100, 1, 1}).index[0], 1);
  EXPECT_THAT(Decomposition({10, 10, 1, 100}).index[0], 0);
}

// The third row takes the first one's place, and the first one's scale of 1/100 moves down with it:
// if its scale stayed behind, it would win the second column.
TEST(LUDecomp, MovesTheScaleWithTheRow) {
  EXPECT_THAT(Decomposition({0, 1, 100, 0, 1, 1, 1, 0, 0}).index, ElementsAre(2, 1, 2));
}

// Near 2^54 doubles lie 4 apart above and 2 apart below: (2^54 + 4 - 3) - 2 rounds to 2^54 - 2,
// (2^54 + 4 - 2) - 3 to 2^54 - 4, and 2^54 + 4 - 5 to 2^54.
TEST(LUDecomp, SubtractsTheProductsOneByOneInOrder) {
  EXPECT_THAT(Decomposition({1, 0, 3, 0, 1, 2, 1, 1, k2p54 + 4}).matrix,
              ElementsAre(1, 0, 3, 0, 1, 2, 1, 1, k2p54 - 2));
}

TEST(LUDecomp, MultipliesByTheReciprocalOfThePivot) {
  const double product = 1 - std::ldexp(1, -53);  // 49 * (1 / 49)
  EXPECT_THAT(Decomposition({49, 0, 49, 98}).matrix, ElementsAre(49, 0, product, 98));
}

TEST(LUDecomp, TakesARowOfNaNForNoRowOfZeros) {
  for (const auto& row :
       {std::vector{kNaN, kNaN}, std::vector{0.0, kNaN}, std::vector{kNaN, 0.0}}) {
    EXPECT_EQ(Decomposition({1, 2, row[0], row[1]}).result, 1);
    EXPECT_EQ(Decomposition({row[0], row[1], 1, 2}).result, 1);
  }
}

TEST(LUSolve, UndoesTheDecomposition) {
  Decomposition d({0, 2, 1, 1, 1, 1, 4, 0, 3});
  std::vector<double> b = {7, 6, 13};  // of x = 1, 2, 3
  LUSolve(d.matrix.data(), 3, d.index.data(), b.data());
  EXPECT_THAT(b, Pointwise(DoubleNear(1e-14), {1.0, 2.0, 3.0}));
}

TEST(LUSolve, SubtractsTheProductsOneByOneInOrder) {
  EXPECT_THAT(solved({1, 0, 0, 0, 1, 0, 1, 1, 1}, {3, 2, k2p54 + 4}), ElementsAre(3, 2, k2p54 - 2));
  EXPECT_THAT(solved({1, 1, 1, 0, 1, 0, 0, 0, 1}, {k2p54 + 4, 3, 2}), ElementsAre(k2p54 - 2, 3, 2));
}

TEST(LUSolve, BeginsToSubtractAtTheFirstNonzero) {
  EXPECT_THAT(solved({1, 0, kInfinity, 1}, {0, 5}), ElementsAre(0, 5));
  EXPECT_THAT(solved({1, 0, 0, kInfinity, 1, 0, kInfinity, 0, 1}, {0, 5, 6}), ElementsAre(0, 5, 6));
}

TEST(LUSolve, TakesNaNForNonzero) { EXPECT_THAT(solved({1, 0, 1, 1}, {kNaN, 5}), Each(IsNan())); }

TEST(Inverse, RejectsADeterminantOfZero) {
  std::vector<double> ones(16, 1), out(16, 77);
  EXPECT_EQ(Invert4x4Matrix(ones.data(), out.data()), 0);
  EXPECT_THAT(out, Each(77));
}

TEST(Inverse, RejectsExactZeroOnly) {
  std::vector<double> tiny(16), out(16);
  for (int i = 0; i < 16; i += 5) tiny[i] = 1e-70;
  EXPECT_EQ(Invert4x4Matrix(tiny.data(), out.data()), 1);
  EXPECT_THAT(out[5], DoubleNear(1e70, 1e56));
  for (double& v : tiny) v *= 1e-30;  // a determinant of 1e-400 is none
  EXPECT_EQ(Invert4x4Matrix(tiny.data(), out.data()), 0);
}

TEST(Inverse, UndoesAMatrixFarFromSymmetric) {
  double in[] = {1, 2, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0, 0, 0, 8, 4};
  double out[16];
  const std::vector<double> before(std::begin(in), std::end(in));
  ASSERT_EQ(Invert4x4Matrix(in, out), 1);
  EXPECT_THAT(out, ElementsAre(1, -2, 0, 0, 0, 1, 0, 0, 0, 0, 0.5, 0, 0, 0, -1, 0.25));
  EXPECT_THAT(in, ElementsAreArray(before));
}

TEST(Inverse, GivesTheIdentityAsAProduct) {
  double in[] = {4, -2, 7, 1, 3, 5, -6, 2, -1, 8, 2, 9, 6, 1, 3, -5};
  double out[16];
  ASSERT_EQ(Invert4x4Matrix(in, out), 1);
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      double sum = 0;
      for (int k = 0; k < 4; ++k) sum += in[4 * i + k] * out[4 * k + j];
      EXPECT_NEAR(sum, i == j, 1e-14) << i << ", " << j;
    }
}

TEST(Inverse, WorksInPlace) {
  double in[] = {4, -2, 7, 1, 3, 5, -6, 2, -1, 8, 2, 9, 6, 1, 3, -5};
  double out[16];
  ASSERT_EQ(Invert4x4Matrix(in, out), 1);
  ASSERT_EQ(Invert4x4Matrix(in, in), 1);
  EXPECT_THAT(in, ElementsAreArray(out));
}

}  // namespace
}  // namespace vistrel::core::test
