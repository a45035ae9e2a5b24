// The inverse of a 4 by 4 matrix.
#include "vistrel/solvers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace vistrel::core::test {
namespace {

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

TEST(Inverse, RefusesADeterminantOfZero) {
  std::vector<double> ones(16, 1), out(16, 77);
  EXPECT_EQ(Invert4x4Matrix(ones.data(), out.data()), 0);
  EXPECT_THAT(out, Each(77));
}

TEST(Inverse, RefusesExactZeroOnly) {
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
