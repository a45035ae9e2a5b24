#include "common/rows/sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

TEST(Sweep, RunsASingleStageRowByRow) {
  std::vector<int> rows;
  Sweep({2, 6}, kUnbounded, stage(0, [&](int y) { rows.push_back(y); })).finish();
  EXPECT_THAT(rows, ElementsAre(2, 3, 4, 5));
}

TEST(Sweep, RunsAStageAsSoonAsItsRowsAreThere) {
  std::string steps;
  const auto step = [&](char name) {
    return [&steps, name](int y) { steps += name + std::to_string(y) + ' '; };
  };
  Sweep({0, 3}, {0, 3}, stage(0, step('a')), stage(1, step('b')), stage(0, step('c'))).finish();
  EXPECT_EQ(steps, "a0 a1 b0 c0 a2 b1 c1 b2 c2 ");
}

// Rows of three stages, each with a reach of its own.
struct Made {
  std::set<int> first, second, third;

  void run(RowInterval rows, RowInterval bounds) {
    const auto expectRound = [bounds](const std::set<int>& before, int y, int reach) {
      for (int row = y - reach; row <= y + reach; ++row)
        EXPECT_EQ(before.count(row), bounds.first <= row && row < bounds.end) << y << ' ' << row;
    };
    Sweep(rows, bounds, stage(0, [&](int y) { EXPECT_TRUE(first.insert(y).second); }),
          stage(2,
                [=, this](int y) {
                  expectRound(first, y, 2);
                  EXPECT_TRUE(second.insert(y).second);
                }),
          stage(1,
                [=, this](int y) {
                  expectRound(second, y, 1);
                  EXPECT_TRUE(third.insert(y).second);
                }))
        .finish();
  }
};

TEST(Sweep, MakesEveryRowThatTheLastStageDependsOnOnce) {
  Made made;
  made.run({10, 12}, kUnbounded);
  EXPECT_THAT(made.third, ElementsAre(10, 11));
  EXPECT_THAT(made.second, ElementsAre(9, 10, 11, 12));
  EXPECT_THAT(made.first, ElementsAre(7, 8, 9, 10, 11, 12, 13, 14));
}

TEST(Sweep, LeavesOutRowsBeyondTheBounds) {
  Made made;
  made.run({0, 2}, {0, 3});
  EXPECT_THAT(made.third, ElementsAre(0, 1));
  EXPECT_THAT(made.second, ElementsAre(0, 1, 2));
  EXPECT_THAT(made.first, ElementsAre(0, 1, 2));
}

}  // namespace
}  // namespace vistrel::core::test
