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

TEST(ProgressStats, FitsNarrowTerminals) {
  app::ProgressStats s;
  s.total = 8, s.done = 4, s.made = 2, s.pixels = 6'000'000, s.seconds = 4;
  EXPECT_EQ(app::barOf(s, 60), "[##########..........] 4/8  0.5 frames/s  0:08 left");
  EXPECT_EQ(app::barOf(s, 40), "4/8  0.5 frames/s  0:08 left");
  EXPECT_EQ(app::barOf(s, 20), "4/8  0:08 left");
  EXPECT_EQ(app::barOf(s, 5), "4/8");
}

TEST(ProgressStats, OfFramesThatArriveHaveNoEnd) {
  app::ProgressStats s;
  EXPECT_EQ(app::barOf(s), "0");
  s.done = 5, s.made = 4, s.failed = 1, s.pixels = 4'000'000, s.seconds = 2;
  EXPECT_EQ(app::barOf(s), "5  2.0 frames/s  2.0 Mpixel/s");
  EXPECT_EQ(app::jsonOf(s), R"({"done":5,"total":null,"seconds":2.0,"frames_per_second":2.0,)"
                            R"("megapixels_per_second":2.0,"remaining_seconds":null})");
}

TEST(ProgressStats, AreSummedUp) {
  app::ProgressStats s;
  s.total = 10, s.done = 8, s.made = 5, s.failed = 1, s.bytes = 50'000'000, s.seconds = 2.5;
  EXPECT_EQ(app::summaryOf(s),
            "5 made, 2 up to date, 1 failed, 2 left in 2.5 s: 2.0 frames/s, 20.0 MB/s");
  s = {};
  EXPECT_EQ(app::summaryOf(s), "0 made, 0 failed in 0.0 s");
}

}  // namespace
}  // namespace vistrel
