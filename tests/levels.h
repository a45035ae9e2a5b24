// Runs a test at every level of the vectorised loops that this processor has.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "common/level.h"

namespace vistrel {

inline void PrintTo(Level level, std::ostream* out) {
  const char* const names[kLevels] = {"base", "ssse3", "sse41", "avx2", "avx512"};
  *out << names[static_cast<int>(level)];
}

}  // namespace vistrel

namespace vistrel::test {

inline std::vector<Level> reachableLevels() {
  std::vector<Level> levels;
  for (int i = 0; i <= static_cast<int>(widestLevel()); ++i)
    levels.push_back(static_cast<Level>(i));
  return levels;
}

// Steers the library to one level, and back to where it was.
class LevelScope {
 public:
  explicit LevelScope(Level level) {
    ippJumpIndexForMergedLibs = level == Level::base ? 0 : level == Level::ssse3 ? 2 : 3;
    if (level >= Level::sse41) g_topLevel = level;
  }
  ~LevelScope() {
    ippJumpIndexForMergedLibs = m_index;
    g_topLevel = m_top;
  }
  LevelScope(const LevelScope&) = delete;
  LevelScope& operator=(const LevelScope&) = delete;

 private:
  const uint32_t m_index = ippJumpIndexForMergedLibs;
  const Level m_top = g_topLevel;
};

class AtEveryLevel : public ::testing::TestWithParam<Level> {
 protected:
  void SetUp() override { ASSERT_EQ(currentLevel(), GetParam()); }

 private:
  LevelScope m_scope{GetParam()};
};

}  // namespace vistrel::test

// Declares a suite whose TEST_P cases run once a level.
#define VISTREL_LEVEL_SUITE(Suite)                                                                \
  class Suite : public ::vistrel::test::AtEveryLevel {};                                          \
  INSTANTIATE_TEST_SUITE_P(Every, Suite, ::testing::ValuesIn(::vistrel::test::reachableLevels()), \
                           ::testing::PrintToStringParamName())
