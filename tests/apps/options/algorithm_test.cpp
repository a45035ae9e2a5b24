#include "apps/options/algorithm.h"

#include <gtest/gtest.h>

namespace vistrel {
namespace {

TEST(AlgorithmChoice, ThresholdIsPartOfTheName) {
  const app::AlgorithmChoice edge = app::parseAlgorithm("-a", "edge:255");
  EXPECT_EQ(edge.row->code, uint32_t{VISTREL_EDGE});
  EXPECT_EQ(edge.threshold, 255u);
  EXPECT_EQ(app::labelOf(edge), "edge:255");
  EXPECT_EQ(app::labelOf(app::parseAlgorithm("-a", "edge")), "edge:0");
  EXPECT_EQ(app::labelOf(app::parseAlgorithm("-a", "ahd")), "ahd");
}

TEST(AlgorithmChoice, CaseIsIgnored) {
  EXPECT_STREQ(app::parseAlgorithm("-a", "AHD").row->name, "ahd");
}

TEST(AlgorithmChoice, AllAreThoseOfTheLibrary) {
  const auto all = app::orAll({});
  std::vector<std::string> names;
  for (size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i].row, vistrel_algorithm_at(i));
    names.emplace_back(all[i].row->name);
  }
  EXPECT_EQ(vistrel_algorithm_at(all.size()), nullptr);
  EXPECT_EQ(app::algorithmNames(), names);
}

TEST(AlgorithmChoice, GivenOnesKeepTheirOrder) {
  const auto given =
      app::orAll({app::parseAlgorithm("-a", "vng"), app::parseAlgorithm("-a", "cok")});
  ASSERT_EQ(given.size(), 2u);
  EXPECT_STREQ(given[0].row->name, "vng");
  EXPECT_STREQ(given[1].row->name, "cok");
}

}  // namespace
}  // namespace vistrel
