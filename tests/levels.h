// Runs a test at every level of the vectorised loops that this processor has.
#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "tests/supported_levels.h"

namespace vistrel::core {

inline void PrintTo(Level level, std::ostream* out) { *out << nameOf(level); }

}  // namespace vistrel::core

namespace vistrel::core::test {

// Sets the library's level, and restores the previous one.
class LevelScope {
 public:
  explicit LevelScope(Level level) { setLevel(level); }
  ~LevelScope() {
    ippJumpIndexForMergedLibs = index_;
    ippSetCpuFeaturesMask(features_);
  }
  LevelScope(const LevelScope&) = delete;
  LevelScope& operator=(const LevelScope&) = delete;

 private:
  const uint32_t index_ = ippJumpIndexForMergedLibs;
  const uint64_t features_ = ippGetEnabledCpuFeatures();
};

class AtEveryLevel : public ::testing::TestWithParam<Level> {
 protected:
  void SetUp() override { ASSERT_EQ(currentLevel(), GetParam()); }

 private:
  LevelScope scope_{GetParam()};
};

}  // namespace vistrel::core::test

// Declares a suite whose TEST_P cases run once at each level.
#define VISTREL_LEVEL_SUITE(Suite)                                                        \
  class Suite : public ::vistrel::core::test::AtEveryLevel {};                            \
  INSTANTIATE_TEST_SUITE_P(Every, Suite,                                                  \
                           ::testing::ValuesIn(::vistrel::core::test::supportedLevels()), \
                           ::testing::PrintToStringParamName())
