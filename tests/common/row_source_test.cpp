#include "common/rows/row_source.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace vistrel::core::test {
namespace {

TEST(RowSource, HasTheRowsOfItsHeight) {
  const uint16_t samples[12] = {};
  const RowSource<uint16_t> source(samples, 4, 3);
  EXPECT_EQ(source.height(), 3);
  EXPECT_FALSE(source.has(-1));
  EXPECT_TRUE(source.has(0));
  EXPECT_TRUE(source.has(2));
  EXPECT_FALSE(source.has(3));
}

TEST(RowSource, CountsItsStepInSamplesOfEitherDirection) {
  const uint16_t samples[12] = {};
  EXPECT_EQ(RowSource<uint16_t>(samples, 4, 3).row(2), samples + 8);
  EXPECT_EQ(RowSource<uint16_t>(samples + 8, -4, 3).row(2), samples);
}

}  // namespace
}  // namespace vistrel::core::test
