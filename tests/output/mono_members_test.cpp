// The arithmetic of monochrome binning: shift, sum, reduce, clamp.
#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/output/members.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(MonoMember);

// One output row from 16-bit samples, through the member itself.
template <class Sample>
std::vector<Sample> member(unsigned n, const std::vector<uint16_t>& source, uint32_t nSrcBits,
                           uint32_t nDstBits, uint32_t nShiftAdjust) {
  const uint32_t stride = static_cast<uint32_t>(source.size() / n);
  Canvas<Sample> canvas(stride / n);
  ImageBinning(n, source.data(), stride, nSrcBits, canvas.data(), stride / n, 1u, nDstBits,
               nShiftAdjust);
  return canvas.samples();
}

TEST_P(MonoMember, ShiftsEachSampleBeforeTheSum) {
  EXPECT_THAT(member<uint8_t>(2, {0x123, 0x456, 0x789, 0x0AB}, 12, 8, 0), ElementsAre(108));
  EXPECT_THAT(member<uint8_t>(2, flat<uint16_t>(4, 15), 12, 8, 0), ElementsAre(0));
  EXPECT_THAT(member<uint8_t>(3, flat<uint16_t>(9, 15), 12, 8, 0), ElementsAre(0));
  EXPECT_THAT(member<uint8_t>(4, flat<uint16_t>(4 * 4 * 64, 15), 12, 8, 0), Each(0));
}

TEST_P(MonoMember, TruncatesTheReducedSum) {
  EXPECT_THAT(member<uint8_t>(2, {1, 1, 1, 0}, 8, 8, 0), ElementsAre(1));
  EXPECT_THAT(member<uint8_t>(3, {1, 1, 1, 1, 0, 1, 1, 1, 1}, 8, 8, 0), ElementsAre(2));
  EXPECT_THAT(member<uint8_t>(4, {1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 8, 8, 0),
              ElementsAre(1));
}

TEST_P(MonoMember, ClampsInsteadOfWrappingWhenNothingIsShifted) {
  EXPECT_THAT(member<uint8_t>(1, {255, 256, 1023, 7}, 10, 8, 2), ElementsAre(255, 255, 255, 7));
  EXPECT_THAT(member<uint16_t>(1, {1023, 1024, 65535, 7}, 10, 10, 0),
              ElementsAre(1023, 1023, 1023, 7));
}

TEST_P(MonoMember, CutsTheCeilingToTheSampleWidth) {
  for (uint32_t nDstBits : {8u, 9u, 10u, 16u, 31u}) {
    EXPECT_THAT(member<uint8_t>(1, flat<uint16_t>(200, 65535), nDstBits, nDstBits, 0), Each(255));
    EXPECT_THAT(member<uint8_t>(1, flat<uint16_t>(200, 254), nDstBits, nDstBits, 0), Each(254));
  }
  EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 65535), 16, 16, 0), Each(65535));
  EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 65535), 17, 17, 0), Each(65535));
  EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 65535), 9, 9, 0), Each(511));
}

TEST_P(MonoMember, CountsTheCeilingsShiftModulo32) {
  EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 999), 32, 32, 0), Each(0));
  EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 999), 0, 0, 0), Each(0));
  EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 999), 40, 40, 0), Each(255));
}

TEST_P(MonoMember, WrapsANegativeDifferenceOfBitsIntoALargeShift) {
  for (uint32_t more = 1; more <= 16; ++more) {
    EXPECT_THAT(member<uint16_t>(1, flat<uint16_t>(200, 65535), 10, 10 + more, 0), Each(0));
    EXPECT_THAT(member<uint8_t>(2, flat<uint16_t>(400, 65535), 8, 8, more), Each(0));
  }
  EXPECT_THAT(member<uint16_t>(1, {65535, 32767}, 10, 27, 0), ElementsAre(1, 0));     // by 15
  EXPECT_THAT(member<uint16_t>(1, {65535, 100}, 10, 42, 0), ElementsAre(1023, 100));  // by 0
}

TEST_P(MonoMember, TakesMinusOneAsOneMoreShift) {
  EXPECT_THAT(member<uint16_t>(1, {100, 1023}, 10, 10, 0xFFFFFFFF), ElementsAre(50, 511));
}

TEST_P(MonoMember, SumsIn32Bits) {
  for (unsigned n : {2u, 3u, 4u})
    EXPECT_THAT(member<uint16_t>(n, flat<uint16_t>(n * n * 65, 65535), 16, 16, 0), Each(65535));
  EXPECT_THAT(member<uint16_t>(4, flat<uint16_t>(16 * 65, 16383), 16, 16, 0), Each(65532));
}

TEST_P(MonoMember, ReadsEachSampleOfItsBlockOnce) {
  for (unsigned n : {1u, 2u, 3u, 4u})
    for (unsigned at = 0; at < n * n * 2; ++at) {
      const unsigned pixel = at % (2 * n) / n;
      EXPECT_THAT(member<uint8_t>(n, impulse<uint16_t>(n * n * 2, at, 120), 8, 8, 0),
                  ElementsAre(pixel == 0 ? 120 / n : 0, pixel == 1 ? 120 / n : 0));
    }
}

TEST_P(MonoMember, WritesNothingWithoutWidthOrHeight) {
  const std::vector<uint16_t> source = flat<uint16_t>(64, 9);
  Canvas<uint8_t> canvas(16);
  for (unsigned n : {1u, 2u, 3u, 4u}) {
    ImageBinning(n, source.data(), 8u, 8u, canvas.data(), 0u, 4u, 8u, 0u);
    ImageBinning(n, source.data(), 8u, 8u, canvas.data(), 4u, 0u, 8u, 0u);
  }
  EXPECT_TRUE(canvas.untouched());
}

}  // namespace
}  // namespace vistrel::core::test
