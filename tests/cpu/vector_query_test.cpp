// The one switch between the paths of the vectorised and the double-precision demosaic.
#include <gtest/gtest.h>

#include "vistrel/platform.h"
#include "vistrel/processor.h"

namespace vistrel::core::test {
namespace {

class VectorQuery : public ::testing::Test {
 protected:
  ~VectorQuery() override { ippSetCpuFeaturesMask(before_); }

  static int withFeatures(uint64_t mask) {
    ippSetCpuFeaturesMask(mask);
    return OS_IsSSE();
  }

 private:
  const uint64_t before_ = ippGetEnabledCpuFeatures();
};

#if defined(__SSE2__)

TEST_F(VectorQuery, FollowsTheEnabledFeature) {
  EXPECT_EQ(withFeatures(0), 0);
  EXPECT_EQ(withFeatures(0x0002), 1);
  EXPECT_EQ(withFeatures(~uint64_t{0x0002}), 0);
  EXPECT_EQ(withFeatures(~uint64_t{0}), 1);
}

TEST_F(VectorQuery, FindsTheInstructionsBeforeAnyDetection) { EXPECT_EQ(withFeatures(7), 1); }

#else

TEST_F(VectorQuery, FindsNothingWithoutVectorOperations) {
  EXPECT_EQ(withFeatures(~uint64_t{0}), 0);
}

#endif

}  // namespace
}  // namespace vistrel::core::test
