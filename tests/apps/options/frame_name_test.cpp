#include "apps/options/frame_name.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

TEST(FrameName, BitsAndPhase) {
  const app::FrameName name = app::parseFrameName("a_rose_12b_rggb");
  EXPECT_EQ(name.bits, 12u);
  EXPECT_EQ(name.phase, uint32_t{VISTREL_RGGB});
  EXPECT_EQ(app::parseFrameName("x_8b_GBRG").phase, uint32_t{VISTREL_GBRG});
}

TEST(FrameName, WithoutAPhaseItIsMono) {
  EXPECT_EQ(app::parseFrameName("f008_12b").bits, 12u);
  EXPECT_FALSE(app::parseFrameName("f008_12b").phase);
  EXPECT_EQ(app::parseFrameName("f008_12b_mono").phase, uint32_t{VISTREL_MONO});
}

TEST(FrameName, WithoutBitsItIsRejected) {
  for (const char* stem : {"rose", "rose_rggb", "12b_rggb", "rose_12_rggb", "rose_b_rggb", "",
                           "rose_12b_", "rose_12bits"})
    EXPECT_EQ(app::attempt([stem] { app::parseFrameName(stem); }).status, app::kRejected) << stem;
}

TEST(FrameName, PhaseByNameOrByTheBlueSite) {
  EXPECT_EQ(app::parsePhase("--phase", "MONO"), uint32_t{VISTREL_MONO});
  EXPECT_EQ(app::parsePhase("--phase", "blue=0,0"), uint32_t{VISTREL_BGGR});
  EXPECT_EQ(app::parsePhase("--phase", "blue=1,0"), uint32_t{VISTREL_GRBG});
}

}  // namespace
}  // namespace vistrel
