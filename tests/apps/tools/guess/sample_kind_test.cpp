#include "apps/tools/guess/sample_kind.h"

#include <gtest/gtest.h>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

constexpr uint32_t kSize = 40;

app::SampleKind kindOf(uint32_t packing, const std::vector<uint8_t>& bytes) {
  const uint32_t bits = packing == VISTREL_PACKING_BYTES ? 8 : 16;
  return app::sampleKindOf(bytes, {{packing, bits, bits}, kSize, kSize * bits / 8, 0}, kSize);
}

// Red 20, green 100, blue 60, all getting a little brighter to the right.
TEST(SampleKind, GreenIsOnTheEvenDiagonal) {
  for (const uint32_t phase : {VISTREL_RGGB, VISTREL_BGGR, VISTREL_GRBG, VISTREL_GBRG}) {
    std::vector<uint8_t> bytes;
    for (uint32_t y = 0; y < kSize; ++y)
      for (uint32_t x = 0; x < kSize; ++x) {
        const uint32_t colour = vistrel_colour_at(phase, x, y);
        const uint32_t level = colour == VISTREL_GREEN ? 100 : colour == VISTREL_RED ? 20 : 60;
        bytes.push_back(static_cast<uint8_t>(level + x / 4));
      }
    const app::SampleKind kind = kindOf(VISTREL_PACKING_BYTES, bytes);
    EXPECT_TRUE(kind.phase == phase || kind.otherPhase == phase) << vistrel_phase_name(phase);
  }
}

TEST(SampleKind, ARampIsMono) {
  std::vector<uint8_t> bytes;
  for (uint32_t i = 0; i < kSize * kSize; ++i)
    bytes.push_back(static_cast<uint8_t>(2 * (i % kSize) + 3 * (i / kSize)));
  EXPECT_EQ(kindOf(VISTREL_PACKING_BYTES, bytes).phase, VISTREL_MONO);
}

TEST(SampleKind, BitsInUse) {
  std::vector<uint8_t> low, high;
  for (uint32_t i = 0; i < kSize * kSize; ++i) {
    const uint32_t sample = i % 4096;
    low.insert(low.end(), {static_cast<uint8_t>(sample), static_cast<uint8_t>(sample >> 8)});
    const uint32_t shifted = i % 1024 << 6;
    high.insert(high.end(), {static_cast<uint8_t>(shifted), static_cast<uint8_t>(shifted >> 8)});
  }
  const app::SampleKind lowest = kindOf(VISTREL_PACKING_LITTLE, low);
  EXPECT_EQ(lowest.bits, 12u);  // up to 1599, which takes 11: cameras have an even number
  EXPECT_FALSE(lowest.highBits);
  const app::SampleKind highest = kindOf(VISTREL_PACKING_LITTLE, high);
  EXPECT_EQ(highest.bits, 10u);
  EXPECT_TRUE(highest.highBits);
}

}  // namespace
}  // namespace vistrel
