#include "apps/progress/progress_stats.h"

#include <gtest/gtest.h>

#include <string>

namespace vistrel {
namespace {

TEST(ProgressStats, HasRateAndRemainingTime) {
  app::ProgressStats s;
  s.total = 8;
  EXPECT_EQ(app::barOf(s), "[....................] 0/8");
  s.done = 4;
  s.made = 2;
  s.pixels = 6'000'000;
  s.seconds = 4;
  // 2 frames in 4 s, 4 to go
  EXPECT_EQ(app::barOf(s), "[##########..........] 4/8  0.5 frames/s  1.5 Mpixel/s  0:08 left");
  EXPECT_EQ(app::jsonOf(s), R"({"done":4,"total":8,"seconds":4.0,"frames_per_second":0.5,)"
                            R"("megapixels_per_second":1.5,"remaining_seconds":8.0})");
  s.total = 3604 + 800000;
  s.seconds = 2;
  EXPECT_NE(app::barOf(s).find("223:13:20 left"), std::string::npos) << app::barOf(s);
  EXPECT_LT(app::barOf(s).size(), 80u);
}

}  // namespace
}  // namespace vistrel
