#include "apps/tools/guess/usual_sizes.h"

#include <gtest/gtest.h>

namespace vistrel {
namespace {

TEST(UsualSizes, AreThoseOfSensors) {
  EXPECT_TRUE(app::isUsual({640, 480}));
  EXPECT_TRUE(app::isUsual({4056, 3040}));
  EXPECT_FALSE(app::isUsual({480, 640}));
  EXPECT_FALSE(app::isUsual({641, 480}));
}

TEST(UsualSizes, AreLikelierThanOthers) {
  EXPECT_GT(app::priorOf({1920, 1080}), app::priorOf({1916, 1080}));
  EXPECT_GT(app::priorOf({1000, 750}), app::priorOf({1000, 790}));  // 4:3
  EXPECT_GT(app::priorOf({1000, 790}), app::priorOf({1001, 790}));  // even
  EXPECT_GT(app::priorOf({1000, 790}), app::priorOf({7900, 100}));  // not slim
  EXPECT_GT(app::priorOf({400, 300}), app::priorOf({40, 30}));      // not tiny
}

}  // namespace
}  // namespace vistrel
