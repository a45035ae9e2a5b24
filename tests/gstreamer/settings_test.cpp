#include "gstreamer/settings.h"

#include <gtest/gtest.h>

#include <cstring>

#include "apps/error.h"

namespace vistrel::gstreamer {
namespace {

TEST(Settings, AreThoseOfADefaultConversion) {
  vistrel_conversion plain, conversion;
  vistrel_default_conversion(nullptr, &plain);
  conversion = plain;
  const Settings settings;
  apply(settings, conversion);
  EXPECT_EQ(std::memcmp(&conversion, &plain, sizeof plain), 0);
}

TEST(Settings, AreAppliedToConversions) {
  vistrel_conversion conversion{};
  Settings settings;
  settings.method = VISTREL_EDGE;
  settings.threshold = 7;
  settings.window = 1;
  apply(settings, conversion);
  EXPECT_EQ(conversion.threshold, 7u);
  EXPECT_EQ(conversion.reduction, VISTREL_WINDOW_MIDDLE);
  settings.method = VISTREL_AHD;
  settings.curve = 6;
  apply(settings, conversion);
  EXPECT_EQ(conversion.threshold, 0u);
  EXPECT_EQ(conversion.reduction, VISTREL_CURVE_6);
  settings.table = {1, 2, 3};
  apply(settings, conversion);
  EXPECT_EQ(conversion.reduction, VISTREL_TABLE);
  EXPECT_EQ(conversion.table_entries, 3u);
}

TEST(Settings, MakeALookOfParts) {
  Settings settings;
  EXPECT_EQ(lookChoiceOf(settings).known, app::KnownLook{});
  settings.look = "linear,curve=srgb";
  settings.black = "1:2:3:4";
  settings.white = 1000;
  settings.gains = "2:1:1.5";
  settings.matrix = "1:0:0:0:1:0:0:0:1";
  const app::LookChoice choice = lookChoiceOf(settings);
  EXPECT_EQ(choice.mode, app::LookMode::kLinear);
  EXPECT_EQ(choice.known.black, (app::BlackLevels{1, 2, 3, 4}));
  EXPECT_EQ(choice.known.white, 1000u);
  EXPECT_EQ(choice.known.gains, (app::Gains{8192, 4096, 6144}));
  EXPECT_EQ(choice.known.matrix, app::kIdentityMatrix);
  EXPECT_EQ(choice.known.transfer, app::Transfer{});
}

TEST(Settings, RejectsTextsThatAreNoLookOrRegion) {
  Settings settings;
  settings.look = "black=3";
  settings.black = "4";
  EXPECT_THROW(lookChoiceOf(settings), app::ProgramError);  // there twice
  settings.region = "8x8";
  EXPECT_THROW(shapeOf(settings), app::ProgramError);
}

TEST(Settings, HaveAShape) {
  Settings settings;
  settings.region = "8x6+1+2";
  settings.binning = 3;
  EXPECT_TRUE((shapeOf(settings) == Shape{{1, 2, 8, 6}, 3}));
  EXPECT_FALSE((shapeOf(settings) == Shape{{1, 2, 8, 6}, 2}));
}

}  // namespace
}  // namespace vistrel::gstreamer
