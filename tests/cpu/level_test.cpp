// Levels by their name, their index and the enabled features. The second half of this file is
// compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/cpu/level_test.cpp"
#include "cpu/level.h"

#include <gmock/gmock.h>

#include "common/simd/each_level.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(LevelAt);

// Levels as a test sets them; restored afterwards.
class Levels : public ::testing::Test {
 protected:
  ~Levels() override { g_topLevel = top_; }

 private:
  const Level top_ = g_topLevel;
};

TEST_F(Levels, HaveNames) {
  EXPECT_EQ(nameOf(Level::base), "base");
  EXPECT_EQ(levelNamed("base"), Level::base);
  for (int l = 0; l < kLevels; ++l)
    EXPECT_EQ(levelNamed(nameOf(static_cast<Level>(l))), static_cast<Level>(l));
  EXPECT_EQ(levelNamed("sse"), std::nullopt);
  EXPECT_EQ(levelNamed(""), std::nullopt);
}

TEST_F(Levels, AreSupportedUpToTheWidest) {
  const std::vector<Level> levels = supportedLevels();
  EXPECT_EQ(levels.front(), Level::base);
  EXPECT_EQ(levels.back(), widestLevel());
  EXPECT_EQ(levels.size(), static_cast<size_t>(widestLevel()) + 1);
  EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
}

// Whatever was enabled before. Other features stay.
TEST_P(LevelAt, IsSetByAMask) {
  const LevelScope scope(GetParam());
  for (const uint64_t features : {uint64_t{IPP_CPU_SSE}, uint64_t{IPP_CPU_NO_AVX2},
                                  uint64_t{IPP_CPU_SSE | IPP_CPU_NO_AVX2 | IPP_CPU_NO_AVX512}}) {
    ippSetCpuFeaturesMask(features);
    setLevel(GetParam());
    EXPECT_EQ(currentLevel(), GetParam());
    EXPECT_EQ(ippGetEnabledCpuFeatures() & IPP_CPU_SSE, features & IPP_CPU_SSE);
  }
}

TEST_P(LevelAt, IsReachedByItsIndex) {
  EXPECT_EQ(levelOfIndex(indexOfLevel(GetParam())), GetParam());
  EXPECT_EQ(*VISTREL_BY_LEVEL(kNumber), static_cast<int>(GetParam()));
  EXPECT_EQ(*VISTREL_AT_LEVEL(Level::base, kNumber), 0);
}

#if VISTREL_X86

TEST_F(Levels, FollowTheEnabledFeatures) {
  EXPECT_EQ(enabledLevel(0), Level::avx512);
  EXPECT_EQ(enabledLevel(IPP_CPU_SSE3 | IPP_CPU_AVX), Level::avx512);
  EXPECT_EQ(enabledLevel(IPP_CPU_NO_AVX512), Level::avx2);
  EXPECT_EQ(enabledLevel(IPP_CPU_NO_AVX2), Level::sse41);
  EXPECT_EQ(enabledLevel(IPP_CPU_NO_AVX2 | IPP_CPU_NO_AVX512), Level::sse41);
}

TEST_F(Levels, HaveAnIndex) {
  EXPECT_EQ(indexOfLevel(Level::base), 1u);  // at 0 the processor is not yet detected
  EXPECT_EQ(indexOfLevel(Level::ssse3), 2u);
  for (Level level : {Level::sse41, Level::avx2, Level::avx512}) EXPECT_EQ(indexOfLevel(level), 3u);
}

TEST_F(Levels, OfLowerIndicesAreFixed) {
  for (Level top : {Level::sse41, Level::avx512}) {
    g_topLevel = top;
    EXPECT_EQ(levelOfIndex(3), top);
    for (uint32_t index : {0u, 1u, 4u, 0xFFFFFFFFu}) EXPECT_EQ(levelOfIndex(index), Level::base);
    EXPECT_EQ(levelOfIndex(2), Level::ssse3);
  }
}

TEST_F(Levels, NeverExceedTheProcessors) {
  for (Level top : {Level::base, Level::ssse3}) {
    g_topLevel = top;
    for (uint32_t index : {2u, 3u}) EXPECT_EQ(levelOfIndex(index), top);
  }
}

#elif defined(__aarch64__)

TEST_F(Levels, AreTwoOn64BitArm) {
  EXPECT_EQ(enabledLevel(0), Level::neon);
  EXPECT_EQ(enabledLevel(IPP_CPU_NO_AVX2), Level::base);
  for (uint32_t index : {0u, 1u, 2u, 3u}) EXPECT_EQ(levelOfIndex(index), Level::neon);
}

#endif

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/simd/simd.h"

namespace vistrel::core::VISTREL_NAMESPACE {
constexpr int kNumber = VISTREL_LEVEL;
}
#endif
