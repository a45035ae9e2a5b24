#include "apps/tools/guess/row_periods.h"

#include <gtest/gtest.h>

#include <random>

namespace vistrel {
namespace {

TEST(RowPeriods, RepeatedBytesRecur) {
  std::mt19937 random(1);
  std::vector<uint8_t> bytes(150);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
  while (bytes.size() < 30000) bytes.push_back(bytes[bytes.size() - 150]);
  const app::Recurrence recurrence(bytes);
  ASSERT_FALSE(recurrence.distances().empty());
  EXPECT_EQ(recurrence.distances()[0] % 150, 0u);
  EXPECT_GT(recurrence.at(150), 6.5);
  EXPECT_LT(recurrence.at(149), recurrence.at(150) / 4);
}

TEST(RowPeriods, NoiseDoesNotRecur) {
  std::mt19937 random(1);
  std::vector<uint8_t> bytes(100000);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
  const app::Recurrence recurrence(bytes);
  for (const size_t distance : recurrence.distances()) EXPECT_LT(recurrence.at(distance), 6.5);
}

}  // namespace
}  // namespace vistrel
