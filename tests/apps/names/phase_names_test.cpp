// Names of phases, compared with a list written by hand and with each other.
#include <gtest/gtest.h>

#include <fmt/format.h>

#include "apps/names/phase_names.h"
#include "apps/options/frame_name.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

TEST(PhaseNames, OfEveryConvention) {
  const struct {
    const char *name, *pfnc, *opencv, *dng;
    std::array<int, 2> blue;
  } expected[] = {{"grbg", "BayerGR", "COLOR_BayerGB2BGR", "01 00 02 01", {1, 0}},
                  {"bggr", "BayerBG", "COLOR_BayerRG2BGR", "02 01 01 00", {0, 0}},
                  {"rggb", "BayerRG", "COLOR_BayerBG2BGR", "00 01 01 02", {1, 1}},
                  {"gbrg", "BayerGB", "COLOR_BayerGR2BGR", "01 02 00 01", {0, 1}}};
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const app::PhaseNames& names = app::phaseNames(phase);
    EXPECT_EQ(names.phase, phase);
    EXPECT_STREQ(names.name, vistrel_phase_name(phase));
    EXPECT_STREQ(names.name, expected[phase].name);
    EXPECT_STREQ(names.pfnc, expected[phase].pfnc);
    EXPECT_STREQ(names.opencv, expected[phase].opencv);
    EXPECT_STREQ(names.dng, expected[phase].dng);
    EXPECT_EQ(names.blue, expected[phase].blue);
  }
}

// All conventions' names can be derived from our letters.
TEST(PhaseNames, Agree) {
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const app::PhaseNames& n = app::phaseNames(phase);
    const std::string letters = n.name;
    std::string upper, dng;
    for (const char c : letters) {
      upper += static_cast<char>(std::toupper(c));
      dng += std::string(dng.empty() ? "" : " ") + (c == 'r' ? "00" : c == 'g' ? "01" : "02");
    }
    EXPECT_EQ(upper, n.fits);
    EXPECT_EQ("VISTREL_" + upper, n.constant);
    EXPECT_EQ(upper.substr(0, 2) + "/" + upper.substr(2), n.block);
    EXPECT_EQ("Bayer" + upper.substr(0, 2), n.pfnc);
    EXPECT_EQ(dng, n.dng);
    EXPECT_EQ(letters.find('b'), static_cast<size_t>(2 * n.blue[0] + n.blue[1]));
    // The block at row 1, column 1 has the letters in reverse order.
    EXPECT_EQ(fmt::format("COLOR_Bayer{}{}2BGR", upper[3], upper[2]), n.opencv);
    EXPECT_EQ(app::parsePhase("--phase", fmt::format("blue={},{}", n.blue[0], n.blue[1])), phase);
  }
}

TEST(PhaseNames, PhaseOfABlock) {
  constexpr uint32_t R = VISTREL_RED, G = VISTREL_GREEN, B = VISTREL_BLUE;
  EXPECT_EQ(app::phaseOfBlock({G, R, B, G}), VISTREL_GRBG);
  EXPECT_EQ(app::phaseOfBlock({B, G, G, R}), VISTREL_BGGR);
  EXPECT_EQ(app::phaseOfBlock({R, G, G, B}), VISTREL_RGGB);
  EXPECT_EQ(app::phaseOfBlock({G, B, R, G}), VISTREL_GBRG);
  EXPECT_EQ(app::phaseOfBlock({R, G, B, G}), VISTREL_MONO);
}

// A BGR pixel has blue first.
TEST(PhaseNames, ChannelOfASite) {
  EXPECT_EQ(app::channelAt(VISTREL_RGGB, 0, 0), 2u);
  EXPECT_EQ(app::channelAt(VISTREL_RGGB, 1, 0), 1u);
  EXPECT_EQ(app::channelAt(VISTREL_RGGB, 3, 5), 0u);
  EXPECT_EQ(app::channelAt(VISTREL_GBRG, 1, 0), 0u);
}

}  // namespace
}  // namespace vistrel
