#include "apps/options/frame_name.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

TEST(FrameName, BitsAndPhase) {
  const app::FrameName name = app::findFrameName("a_rose_12b_rggb").value();
  EXPECT_EQ(name.bits, 12u);
  EXPECT_EQ(name.phase, uint32_t{VISTREL_RGGB});
  EXPECT_EQ(app::findFrameName("x_8b_GBRG").value().phase, uint32_t{VISTREL_GBRG});
}

TEST(FrameName, WithoutAPhaseItIsMono) {
  EXPECT_EQ(app::findFrameName("f008_12b").value().bits, 12u);
  EXPECT_FALSE(app::findFrameName("f008_12b").value().phase);
  EXPECT_EQ(app::findFrameName("f008_12b_mono").value().phase, uint32_t{VISTREL_MONO});
}

TEST(FrameName, WithoutBitsItSaysNothing) {
  for (const char* stem : {"rose", "rose_rggb", "12b_rggb", "rose_12_rggb", "rose_b_rggb", "",
                           "rose_12b_", "rose_12bits"})
    EXPECT_FALSE(app::findFrameName(stem)) << stem;
}

TEST(FrameName, PhaseByNameOrByTheBlueSite) {
  EXPECT_EQ(app::parsePhase("--phase", "MONO"), uint32_t{VISTREL_MONO});
  EXPECT_EQ(app::parsePhase("--phase", "blue=0,0"), uint32_t{VISTREL_BGGR});
  EXPECT_EQ(app::parsePhase("--phase", "blue=1,0"), uint32_t{VISTREL_GRBG});
}

}  // namespace
}  // namespace vistrel
