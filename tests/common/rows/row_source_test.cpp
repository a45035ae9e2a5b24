#include "common/rows/row_source.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace vistrel::core::test {
namespace {

TEST(PlainRows, CountTheirStepInSamplesOfEitherDirection) {
  const uint16_t samples[12] = {};
  PlainRows<uint16_t> downwards(samples, 4, 3), upwards(samples + 8, -4, 3);
  for (int y = 0; y < 3; ++y) {
    EXPECT_EQ(downwards.row(y), samples + 4 * y);
    EXPECT_EQ(upwards.row(y), samples + 8 - 4 * y);
  }
}

// A prefetch has no result; it must not fail behind the last row either.
TEST(PlainRows, OfferTheNextRowToFetch) {
  const uint16_t samples[8] = {};
  PlainRows<uint16_t> rows(samples, 4, 2);
  for (int y = 0; y < 2; ++y) {
    rows.row(y);
    rows.next().fetch(0, 4);
  }
}

}  // namespace
}  // namespace vistrel::core::test
