#include "apps/tools/report/stopwatch.h"

#include <gtest/gtest.h>

#include "vistrel/vistrel.hpp"

namespace vistrel {
namespace {

TEST(Stopwatch, TimesEveryAlgorithmAtEveryLevel) {
  const std::vector<uint16_t> samples(32 * 32, 4000);
  const vistrel_frame frame = frameOf({samples.data(), samples.size()}, 32, 32, 12, VISTREL_RGGB);
  const size_t before = vistrel_level();
  const auto timings = app::timeAll(
      frame, {app::parseAlgorithm("-a", "ahd"), app::parseAlgorithm("-a", "laroche")}, 2);
  EXPECT_EQ(vistrel_level(), before);
  size_t i = 0;
  for (size_t level = 0; const char* name = vistrel_level_name(level); ++level)
    for (const uint32_t bits : {12, 10}) {  // laroche takes ten
      ASSERT_LT(i, timings.size());
      EXPECT_EQ(timings[i].level, name);
      EXPECT_EQ(timings[i].bits, bits);
      EXPECT_GT(timings[i].nsPerPixel, 0);
      EXPECT_GE(timings[i].medianNsPerPixel, timings[i].nsPerPixel);
      ++i;
    }
  EXPECT_EQ(i, timings.size());
}

}  // namespace
}  // namespace vistrel
