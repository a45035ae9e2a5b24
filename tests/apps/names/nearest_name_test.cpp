#include "apps/names/nearest_name.h"

#include <gtest/gtest.h>

namespace vistrel {
namespace {

using app::nearestName;

TEST(NearestName, AnAbbreviationIsTheNameThatItBegins) {
  const std::vector<std::string> names{"bench", "compare", "convert", "develop"};
  EXPECT_EQ(nearestName("con", names), "convert");
  EXPECT_EQ(nearestName("DEV", names), "develop");
  EXPECT_EQ(nearestName("com", names), "compare");
  EXPECT_EQ(nearestName("c", names), "") << "too short to mean one of them";
  EXPECT_EQ(nearestName("12", {"16"}), "") << "a number is not misspelt";
  EXPECT_EQ(nearestName("conv", {"convert", "cont"}), "cont") << "an edit is less";
}

TEST(NearestName, OneEditForEveryFourCharacters) {
  const std::vector<std::string> names{"convert", "compare"};
  EXPECT_EQ(nearestName("convrt", names), "convert");    // a character is missing
  EXPECT_EQ(nearestName("comppare", names), "compare");  // one too many
  EXPECT_EQ(nearestName("kompair", names), "");          // c, r and e are wrong: 3 edits for 7
  EXPECT_EQ(nearestName("kompaire", {"compare"}), "compare");  // k and i: 2 edits for 8
  EXPECT_EQ(nearestName("", names), "");
  EXPECT_EQ(nearestName("convert", {}), "");
}

TEST(NearestName, CaseIsIgnoredAndTheFirstOfEqualsWins) {
  EXPECT_EQ(nearestName("CONVERTS", {"info", "convert"}), "convert");
  EXPECT_EQ(nearestName("RGBC", {"RGBA", "RGBD"}), "RGBA");
  EXPECT_EQ(nearestName("Y1O", {"Y10", "Y12"}), "Y10");
  EXPECT_EQ(nearestName("Y", {"Y1"}), "");  // too short for an edit
}

TEST(NearestName, AnExchangeOfNeighboursIsOneEdit) {
  EXPECT_EQ(nearestName("rgbg", {"bggr", "rggb"}), "rggb");
  EXPECT_EQ(nearestName("covnert", {"convert"}), "convert");
  EXPECT_EQ(nearestName("formast", {"format", "formats"}), "format") << "both are one edit away";
  EXPECT_EQ(nearestName("ofni", {"info"}), "") << "o and i are no neighbours";
}

TEST(NearestName, Text) {
  EXPECT_EQ(app::nearestText("convrt", {"convert"}), "; the nearest is convert");
  EXPECT_EQ(app::nearestText("darken", {"convert"}), "");
}

}  // namespace
}  // namespace vistrel
