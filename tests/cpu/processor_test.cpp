// Detecting features, and reporting and enabling them.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "cpu/level.h"
#include "tests/cpu/fake_processor.h"
#include "vistrel/platform.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

using Detection = OnFakeProcessor;
using Features = OnFakeProcessor;
using EnabledFeatures = OnFakeProcessor;

uint64_t detected() {
  ownFeaturesAreValid = 0;
  uint64_t mask = 0;
  EXPECT_EQ(ownGetMaskFeatures(&mask), 1);
  return mask;
}

TEST_F(Detection, TurnsEachBitOfLeafOneIntoItsFeature) {
  struct Bit {
    CpuidRegisters one;
    uint64_t feature;
  };
  const Bit bits[] = {
      {{0, 0, 0, 1 << 23}, 0x0001}, {{0, 0, 0, 1 << 25}, 0x0002}, {{0, 0, 0, 1 << 26}, 0x0004},
      {{0, 0, 1 << 0, 0}, 0x0008},  {{0, 0, 1 << 9, 0}, 0x0010},  {{0, 0, 1 << 22, 0}, 0x0020},
      {{0, 0, 1 << 19, 0}, 0x0040}, {{0, 0, 1 << 20, 0}, 0x0080}, {{0, 0, 1 << 28, 0}, 0x0100},
      {{0, 0, 1 << 25, 0}, 0x0400}, {{0, 0, 1 << 1, 0}, 0x0800},
  };
  for (const Bit& bit : bits) {
    one() = bit.one;
    EXPECT_EQ(detected(), bit.feature);
  }
}

TEST_F(Detection, IgnoresAllOtherBits) {
  one() = {~0xF00u, ~0u, ~0x12580203u, ~0x06800000u};
  EXPECT_EQ(detected(), 0u);
}

TEST_F(Detection, AsksForTheSystemsAvxState) {
  one().ecx = 1u << 27 | 1u << 28;
  fake.state = 6;
  EXPECT_EQ(detected(), 0x0300u);
  fake.state = 2;
  EXPECT_EQ(detected(), 0x0100u);
  one().ecx = 1u << 27;
  fake.state = 6;
  EXPECT_EQ(detected(), 0u);
}

TEST_F(Detection, ReadsTheReservedFeatureOfFamilyBOnly) {
  fake.leaves[{0x20000001, 0}].edx = 2;
  for (uint32_t family = 0; family < 16; ++family) {
    one().eax = family << 8 | 0xFFFF00FF;
    fake.leafReads.clear();
    EXPECT_EQ(detected(), family == 0xB ? 0x1000u : 0u) << family;
    EXPECT_EQ(fake.leafReads[0x20000001], family == 0xB) << family;
  }
  one().eax = 0xB00;
  fake.leaves[{0x20000001, 0}].edx = ~2u;
  EXPECT_EQ(detected(), 0u);
}

TEST_F(Detection, HappensOnce) {
  one().edx = 1 << 25;
  EXPECT_EQ(detected(), 2u);
  one().edx = 1 << 26;
  uint64_t mask = 0;
  EXPECT_NE(ownGetMaskFeatures(&mask), 0);
  EXPECT_EQ(mask, 2u);
  EXPECT_EQ(fake.leafReads[1], 2);  // one for the mask, one for the state of AVX
}

TEST_F(Detection, FailsWithoutCpuid) {
  fake.present = false;
  uint64_t mask = 77;
  EXPECT_EQ(ownGetMaskFeatures(&mask), 0);
  EXPECT_EQ(mask, 77u);
  EXPECT_EQ(ownFeaturesAreValid, 0);
}

TEST_F(Features, AreReportedWithTheRegistersOfLeafOne) {
  one() = {0x306A9, 0x00100800, 1, 1 << 25};
  uint64_t mask = 77;
  uint32_t registers[] = {7, 7, 7, 7};
  EXPECT_EQ(ippGetCpuFeatures(&mask, registers), 0);
  EXPECT_EQ(mask, 0x000Au);
  EXPECT_THAT(registers, ElementsAre(0x306A9, 0x00100800, 1, 1 << 25));
}

uint64_t getInfo() {
  uint64_t word;
  std::memcpy(&word, "getinfoa", 8);
  return word;
}

TEST_F(Features, AreReportedWithTheCallersLeafForAKnownMask) {
  one().edx = 1 << 25;
  fake.leaves[{4, 3}] = {11, 22, 33, 44};
  uint64_t mask = getInfo();
  uint32_t registers[] = {4, 99, 3, 99};
  EXPECT_EQ(ippGetCpuFeatures(&mask, registers), 0);
  EXPECT_EQ(mask, 2u);
  EXPECT_THAT(registers, ElementsAre(11, 22, 33, 44));
}

TEST_F(Features, TakeTheKnownMaskForAnyOtherWithoutRegisters) {
  one().edx = 1 << 25;
  uint64_t mask = getInfo();
  EXPECT_EQ(ippGetCpuFeatures(&mask, nullptr), 0);
  EXPECT_EQ(mask, 2u);
}

TEST_F(Features, NeedADestination) {
  uint32_t registers[] = {7, 7, 7, 7};
  EXPECT_EQ(ippGetCpuFeatures(nullptr, registers), -8);
  EXPECT_THAT(registers, Each(7));
}

TEST_F(Features, AreMissingWithoutCpuid) {
  fake.present = false;
  uint64_t mask = 77;
  uint32_t registers[] = {7, 7, 7, 7};
  EXPECT_EQ(ippGetCpuFeatures(&mask, registers), 36);
  EXPECT_EQ(ippGetCpuFeatures(nullptr, nullptr), 36);
  EXPECT_EQ(mask, 77u);
  EXPECT_THAT(registers, Each(7));
}

#if VISTREL_X86

TEST_F(EnabledFeatures, LimitTheBodyOfIndexThree) {
  const auto bodyWith = [](uint64_t mask) {
    ippSetCpuFeaturesMask(mask);
    EXPECT_EQ(ippGetEnabledCpuFeatures(), mask);
    return levelOfIndex(3);
  };
  const uint64_t before = ippGetEnabledCpuFeatures();
  EXPECT_EQ(bodyWith(0xCDF), widestLevel());
  EXPECT_EQ(bodyWith(0xCDF | IPP_CPU_NO_AVX512), std::min(widestLevel(), Level::avx2));
  EXPECT_EQ(bodyWith(0xCDF | IPP_CPU_NO_AVX2), std::min(widestLevel(), Level::sse41));
  EXPECT_EQ(bodyWith(IPP_CPU_NO_AVX2 | IPP_CPU_NO_AVX512), std::min(widestLevel(), Level::sse41));
  EXPECT_EQ(levelOfIndex(2), std::min(widestLevel(), Level::ssse3));
  EXPECT_EQ(bodyWith(before), widestLevel());
}

#else

TEST(FeaturesOfX86, AreNeitherDetectedNorEnabledElsewhere) {
  EXPECT_EQ(ippStaticInit(), kOtherVendor);
  EXPECT_EQ(ippGetEnabledCpuFeatures(), 0u);
  for (uint64_t feature = IPP_CPU_MMX; feature <= IPP_CPU_FAMILY_B; feature <<= 1)
    EXPECT_EQ(ownGetFeature(feature), 0) << feature;
  EXPECT_EQ(OS_IsSSE(), 0);
}

#endif

TEST_F(EnabledFeatures, AreStoredAsGiven) {
  EXPECT_EQ(ippSetCpuFeaturesMask(0xFEDCBA9876543210), 0);
  EXPECT_EQ(ippGetEnabledCpuFeatures(), 0xFEDCBA9876543210);
  EXPECT_EQ(ownSetFeatureMask(5), 1);
  EXPECT_EQ(ippGetEnabledCpuFeatures(), 5u);
}

TEST_F(EnabledFeatures, AreAllAskedForAtOnce) {
  ownSetFeatureMask(0x100000005);
  for (uint64_t mask : {0x0ull, 0x1ull, 0x4ull, 0x5ull, 0x100000000ull, 0x100000005ull})
    EXPECT_EQ(ownGetFeature(mask), 1) << mask;
  for (uint64_t mask : {0x2ull, 0x3ull, 0x7ull, 0x200000001ull})
    EXPECT_EQ(ownGetFeature(mask), 0) << mask;
}

}  // namespace
}  // namespace vistrel::core::test
