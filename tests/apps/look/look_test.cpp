// Looks as text.
#include "apps/look/look.h"

#include <gmock/gmock.h>

#include "apps/error.h"

namespace vistrel::app {
namespace {

using ::testing::HasSubstr;

std::string errorOf(const std::string& text) {
  try {
    parseLook(text);
  } catch (const ProgramError& error) {
    EXPECT_EQ(error.status(), kUsage) << text;
    return error.what();
  }
  return "";
}

TEST(LookText, HasAllParts) {
  Look look;
  look.black = {64, 64, 66, 64};
  look.white = 959;
  look.gains = {7673, 4096, 6357};  // 1.87329, 1, 1.55200
  look.exposure = 5120;
  look.transfer = {Curve::kAsinh, 50'000};
  EXPECT_EQ(lookText(look),
            "black=64:64:66:64,white=959,gains=1.8733:1.0000:1.5520,"
            "matrix=1.0000:0.0000:0.0000:0.0000:1.0000:0.0000:0.0000:0.0000:1.0000,"
            "exposure=1.2500,curve=asinh:50.000,highlights=neutral");
}

TEST(LookText, SaysHowHighlightsAreClipped) {
  Look look;
  look.neutralHighlights = false;
  EXPECT_THAT(lookText(look), HasSubstr("highlights=clip"));
}

TEST(LookText, IsParsedToTheSameIntegers) {
  for (uint32_t n = 1; n <= 65536; n += 7) {
    Look look;
    look.black = {n % 60000, 1, 2, 3};
    look.white = 65535;
    look.gains = {n, 4096, 65537 - n};
    for (size_t i = 0; i < 9; ++i)
      look.matrix[i] = (static_cast<int32_t>(n) - 32760) / 4 + static_cast<int32_t>(i % 2);
    look.exposure = 64 * n - 63;
    look.transfer =
        n % 2 ? Transfer{Curve::kAsinh, 15'000 * n} : Transfer{Curve::kGamma, 100 + n % 9900};
    look.neutralHighlights = n % 3;
    const KnownLook known = parseLook(lookText(look)).known;
    ASSERT_EQ(known, (KnownLook{look.black, look.white, look.gains, look.matrix, look.exposure,
                                look.transfer, look.neutralHighlights}))
        << lookText(look);
  }
}

TEST(LookText, CurvesWithoutParameter) {
  Look look;
  for (const Curve curve : {Curve::kLinear, Curve::kSrgb}) {
    look.transfer = {curve, 0};
    look.white = 255;
    EXPECT_EQ(parseLook(lookText(look)).known.transfer, look.transfer);
  }
}

TEST(ParseLook, ModesComeFirst) {
  EXPECT_EQ(parseLook("auto").mode, LookMode::kAuto);
  EXPECT_EQ(parseLook("linear").mode, LookMode::kLinear);
  EXPECT_EQ(parseLook("srgb").mode, LookMode::kSrgb);
  const LookChoice choice = parseLook("astro,white=4095");
  EXPECT_EQ(choice.mode, LookMode::kAstro);
  EXPECT_EQ(choice.known.white, 4095u);
  EXPECT_THAT(
      errorOf("white=4095,astro"),
      HasSubstr("--look white=4095,astro: only the first part can be a mode, such as astro"));
}

TEST(ParseLook, NamesOfCurvesAreThoseOfTheLibrary) {
  EXPECT_EQ(parseLook("curve=SRGB").known.transfer, (Transfer{Curve::kSrgb, 0}));
  EXPECT_EQ(parseLook("curve=Gamma:2.2").known.transfer, (Transfer{Curve::kGamma, 2200}));
}

TEST(ParseLook, CaseMakesNoDifference) {
  EXPECT_EQ(parseLook("AUTO").mode, LookMode::kAuto);
  EXPECT_EQ(parseLook("Astro,White=4095,HIGHLIGHTS=Clip").known.white, 4095u);
  EXPECT_EQ(parseLook("Astro,White=4095,HIGHLIGHTS=Clip").known.neutralHighlights, false);
}

TEST(ParseLook, LargestMatrix) {
  EXPECT_EQ(parseLook("matrix=7.9997:0:0:4:-3.9997:0:0:0:1").known.matrix->front(), 32767);
}

TEST(ParseLook, WhatIsNotGivenIsUnknown) {
  EXPECT_EQ(parseLook("auto").known, KnownLook{});
  const KnownLook known = parseLook("exposure=1.25").known;
  EXPECT_EQ(known.exposure, 5120u);
  EXPECT_FALSE(known.black || known.white || known.gains || known.matrix || known.transfer);
}

TEST(ParseLook, OneBlackIsForAllPlaces) {
  EXPECT_EQ(parseLook("black=64").known.black, (BlackLevels{64, 64, 64, 64}));
  EXPECT_EQ(parseLook("black=1:2:3:4").known.black, (BlackLevels{1, 2, 3, 4}));
}

TEST(ParseLook, NumbersAreRoundedToTheNearest) {
  // 1.8734 * 4096 = 7673.4; 0.00037 * 4096 = 1.5, halves up.
  EXPECT_EQ(parseLook("gains=1.8734:1:0.0003662109375").known.gains, (Gains{7673, 4096, 2}));
  EXPECT_EQ(parseLook("matrix=-0.5:0:0:0:1:0:0:0:1").known.matrix->front(), -2048);
}

TEST(ParseLook, RejectionsNameThePartItsValueAndWhatIsAllowed) {
  const std::pair<const char*, const char*> cases[] = {
      {"black=64:64", "black=64:64: black is a level from 0 to 65535, or four"},
      {"black=1:2:3:4:5", "or four"},
      {"black=-1", "0 to 65535"},
      {"black=65536", "0 to 65535"},
      {"black=", "black=: black is"},
      {"white=0", "white=0: white is a level from 1 to 65535"},
      {"white=1.5", "1 to 65535"},
      {"white=12a", "1 to 65535"},
      {"gains=1:1", "gains=1:1: gains is red, green and blue from 1/4096 to 16"},
      {"gains=0:1:1", "from 1/4096 to 16"},
      {"gains=16.001:1:1", "from 1/4096 to 16"},
      {"gains=nan:1:1", "from 1/4096 to 16"},
      {"gains=1:1:1e1", "from 1/4096 to 16"},
      {"matrix=1:0:0", "whose sizes add up to at most 7.9997 in a row"},
      {"matrix=7.9999:0:0:0:1:0:0:0:1", "at most 7.9997"},
      {"matrix=4:-4:0:0:1:0:0:0:1", "whose sizes add up to at most 7.9997 in a row"},
      {"exposure=0", "a factor from 1/4096 to 1024"},
      {"exposure=1025", "a factor from 1/4096 to 1024"},
      {"curve=gamma", "gamma:G with G from 0.1 to 10"},
      {"curve=gamma:11", "gamma:G with G from 0.1 to 10"},
      {"curve=srgb:1", "curve=srgb:1: curve is linear, srgb"},
      {"curve=asinh:0", "asinh:N with N from 0.001"},
      {"curve=film", "linear, srgb"},
      {"highlights=pink", "neutral or clip"},
      {"blck=64",
       "blck=64: the names are black, white, gains, matrix, exposure, curve, highlights"},
      {"=1", "the names are"},
      {"white", "white: NAME=VALUE is expected, or first auto, linear, srgb or astro"},
      {"", "--look : a part is empty"},
      {"auto,",
       "--look auto,: a part is empty; auto, linear, srgb, astro or NAME=VALUE is expected"},
      {",", "--look ,: a part is empty; "},
      {"white=9,,black=1", "--look white=9,,black=1: a part is empty; "},
      {"auto,auto", "--look auto,auto: only the first part can be a mode, such as auto"},
      {"white=9,black=1,white=8", "white is there twice"},
      {"white=64,black=1:2:64:3", "white=64 is not above black=64"}};
  for (const auto& [text, message] : cases) EXPECT_THAT(errorOf(text), HasSubstr(message)) << text;
}

}  // namespace
}  // namespace vistrel::app
