// Bytes of packed rows by the definitions of the packings; the last group lacks a sample.
#include "apps/pictures/raw_frame.h"

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using ::testing::ElementsAre;

std::vector<uint8_t> packed(const char* format, const std::vector<uint16_t>& samples) {
  return app::packRow(*app::findPixelFormat(format), samples.data(), samples.size());
}

TEST(PackRow, TwelveBits) {
  const std::vector<uint16_t> samples{0x123, 0x456, 0x789};
  EXPECT_THAT(packed("BayerRG12p", samples), ElementsAre(0x23, 0x61, 0x45, 0x89, 0x07));
  EXPECT_THAT(packed("BayerRG12Packed", samples), ElementsAre(0x12, 0x63, 0x45, 0x78, 0x09));
  EXPECT_THAT(packed("SRGGB12P", samples), ElementsAre(0x12, 0x45, 0x63, 0x78, 0x09));
  EXPECT_THAT(packed("RG12", samples), ElementsAre(0x23, 0x01, 0x56, 0x04, 0x89, 0x07));
  EXPECT_THAT(packed("rggb12be", samples), ElementsAre(0x01, 0x23, 0x04, 0x56, 0x07, 0x89));
}

TEST(PackRow, TenAndFourteenBits) {
  EXPECT_THAT(packed("SRGGB10P", {0x155, 0x2AA}), ElementsAre(0x55, 0xAA, 0x09));
  EXPECT_THAT(packed("BayerRG14p", {0x1555, 0x2AAA}), ElementsAre(0x55, 0x95, 0xAA, 0x0A));
}

}  // namespace
}  // namespace vistrel
