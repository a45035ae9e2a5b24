#include "common/mosaic.h"

#include <gtest/gtest.h>

#include <string>

using namespace vistrel::core;

namespace {

// The letters of the upper left 2 x 2 pixels, row by row.
std::string lettersOf(const Mosaic& mosaic) {
  constexpr char kLetters[] = {'B', 'G', 'R'};
  std::string letters;
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 2; ++x) letters += kLetters[mosaic.colourAt(x, y)];
  return letters;
}

TEST(Mosaic, IsNamedByItsPhaseCode) {
  EXPECT_EQ(lettersOf(Mosaic::ofPhase(0)), "GRBG");
  EXPECT_EQ(lettersOf(Mosaic::ofPhase(1)), "BGGR");
  EXPECT_EQ(lettersOf(Mosaic::ofPhase(2)), "RGGB");
  EXPECT_EQ(lettersOf(Mosaic::ofPhase(3)), "GBRG");
}

TEST(Mosaic, IsNamedByItsGridCode) {
  EXPECT_EQ(lettersOf(Mosaic::ofGrid(0)), "BGGR");
  EXPECT_EQ(lettersOf(Mosaic::ofGrid(1)), "RGGB");
  EXPECT_EQ(lettersOf(Mosaic::ofGrid(2)), "GBRG");
  EXPECT_EQ(lettersOf(Mosaic::ofGrid(3)), "GRBG");
}

TEST(Mosaic, ReadsNoMoreThanTwoBitsOfAPhaseCode) {
  for (unsigned code = 0; code < 4; ++code)
    EXPECT_EQ(Mosaic::ofPhase(code + 4), Mosaic::ofPhase(code));
}

TEST(Mosaic, RepeatsItsBlockInEveryDirection) {
  const Mosaic rggb = Mosaic::ofPhase(2);
  for (int y = -4; y < 4; y += 2)
    for (int x = -4; x < 4; x += 2) {
      EXPECT_EQ(rggb.colourAt(x, y), kRed);
      EXPECT_EQ(rggb.colourAt(x + 1, y), kGreen);
      EXPECT_EQ(rggb.colourAt(x, y + 1), kGreen);
      EXPECT_EQ(rggb.colourAt(x + 1, y + 1), kBlue);
    }
}

TEST(Mosaic, DistinguishesTheTwoGreenSites) {
  const Mosaic grbg = Mosaic::ofPhase(0);
  EXPECT_EQ(grbg.siteAt(0, 0), SITE_GR);
  EXPECT_EQ(grbg.siteAt(1, 0), SITE_R);
  EXPECT_EQ(grbg.siteAt(0, 1), SITE_B);
  EXPECT_EQ(grbg.siteAt(1, 1), SITE_GB);
}

TEST(Mosaic, IsDeterminedByOneSite) {
  for (const Site site : {SITE_GR, SITE_R, SITE_B, SITE_GB})
    EXPECT_EQ(Mosaic(site).siteAt(0, 0), site);
  EXPECT_EQ(Mosaic(SITE_R), Mosaic::ofPhase(2));
}

TEST(Mosaic, ExchangesRedAndBlue) {
  EXPECT_EQ(lettersOf(Mosaic::ofPhase(0).exchanged()), "GBRG");
  EXPECT_EQ(lettersOf(Mosaic::ofPhase(1).exchanged()), "RGGB");
}

TEST(Mosaic, MovesItsOrigin) {
  const Mosaic grbg = Mosaic::ofPhase(0);
  EXPECT_EQ(lettersOf(grbg.from(1, 0)), "RGGB");
  EXPECT_EQ(lettersOf(grbg.from(0, 1)), "BGGR");
  EXPECT_EQ(lettersOf(grbg.from(-1, 3)), "GBRG");
  EXPECT_EQ(grbg.from(4, -2), grbg);
}

TEST(Mosaic, DescribesItsRows) {
  for (unsigned code = 0; code < 4; ++code) {
    const Mosaic mosaic = Mosaic::ofPhase(code);
    for (int y = -3; y < 4; ++y) {
      const unsigned green = mosaic.greenParity(y), other = mosaic.colourParity(y);
      EXPECT_TRUE(mosaic.isGreenAt(green, y));
      EXPECT_FALSE(mosaic.isGreenAt(other, y));
      EXPECT_EQ(mosaic.colourAt(green, y), kGreen);
      EXPECT_EQ(mosaic.colourAt(other, y), mosaic.isRedRow(y) ? kRed : kBlue);
    }
  }
}

}  // namespace
