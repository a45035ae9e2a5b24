// The grid code of a colour filter array primitive for each phase.
#include <gtest/gtest.h>

#include "vistrel/image_functions.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {
namespace {

TEST(GridCode, IsTheGridWithRedAndBlueExchanged) {
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_GRBG), 2u);
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_BGGR), 1u);
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_RGGB), 0u);
  EXPECT_EQ(VST2IPPBayerOffset(BAYER_GBRG), 3u);
  for (unsigned other : {4u, 5u, 0xFFFFFFFFu}) EXPECT_EQ(VST2IPPBayerOffset(other), 2u);
}

}  // namespace
}  // namespace vistrel::core::test
