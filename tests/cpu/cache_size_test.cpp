// Looks up a cache descriptor in a table of sizes.
#include "tests/cpu/fake_processor.h"

namespace vistrel::core::test {
namespace {

using CacheSize = OnFakeProcessor;

TEST_F(CacheSize, IsThatOfTheFirstDescriptorFoundInTableOrder) {
  fake.leaves[{2, 0}] = {0x665B5001, 0, 0, 0x007A7040};
  const uint32_t first[] = {0x99, 1, 0x40, 2, 0x5B, 3, 0, 4};
  EXPECT_EQ(ownGetCacheSize(first), 2);
  const uint32_t second[] = {0x66, 512, 0x40, 2, 0, 4};
  EXPECT_EQ(ownGetCacheSize(second), 512);
}

TEST_F(CacheSize, IsLookedForInEveryByteOfEveryRegister) {
  fake.leaves[{2, 0}] = {0x04030201, 0x08070605, 0x0C0B0A09, 0x100F0E0D};
  for (uint32_t descriptor = 2; descriptor <= 16; ++descriptor) {
    const uint32_t table[] = {descriptor, 1000 + descriptor, 0, 0};
    EXPECT_EQ(ownGetCacheSize(table), static_cast<int32_t>(1000 + descriptor));
  }
}

TEST_F(CacheSize, NeverMatchesTheCountByte) {
  fake.leaves[{2, 0}] = {0x04030201, 0, 0, 0};
  const uint32_t table[] = {1, 77, 0, 0};
  EXPECT_EQ(ownGetCacheSize(table), -1);
}

TEST_F(CacheSize, IsUnknownWhereNoDescriptorIsFound) {
  fake.leaves[{2, 0}] = {0x04030201, 0x08070605, 0, 0};
  const uint32_t none[] = {9, 77, 0x104, 78, 0x0201, 79, 0, 80, 4, 81};
  EXPECT_EQ(ownGetCacheSize(none), -1);
  const uint32_t empty[] = {0, 80};
  EXPECT_EQ(ownGetCacheSize(empty), -1);
}

TEST_F(CacheSize, WantsACountOfOne) {
  const uint32_t table[] = {4, 77, 0, 0};
  for (uint32_t count : {0u, 2u, 255u}) {
    fake.leaves[{2, 0}] = {0x04030200 | count, 0, 0, 0};
    EXPECT_EQ(ownGetCacheSize(table), -1) << count;
  }
}

TEST_F(CacheSize, SkipsRegistersWithTheirTopBit) {
  fake.leaves[{2, 0}] = {0x04030201, 0x88070605, 0x0C0B0A09, 0};
  for (uint32_t descriptor : {5u, 6u, 7u, 0x88u}) {
    const uint32_t table[] = {descriptor, 77, 0, 0};
    EXPECT_EQ(ownGetCacheSize(table), -1) << descriptor;
  }
  for (uint32_t descriptor : {9u, 0x0Au, 0x0Bu, 0x0Cu}) {
    const uint32_t table[] = {descriptor, 77, 0, 0};
    EXPECT_EQ(ownGetCacheSize(table), 77) << descriptor;
  }
}

// quirk: first-byte-skipped
TEST_F(CacheSize, SkipsTheLowByteOfTheFirstRegisterInUse) {
  fake.leaves[{2, 0}] = {0x80000001, 0x08070605, 0, 0};
  const uint32_t low[] = {5, 77, 0, 0};
  EXPECT_EQ(ownGetCacheSize(low), -1);
  for (uint32_t descriptor : {6u, 7u, 8u}) {
    const uint32_t table[] = {descriptor, 77, 0, 0};
    EXPECT_EQ(ownGetCacheSize(table), 77) << descriptor;
  }
}

TEST_F(CacheSize, DoesNotCountRegistersOfZeroForInUse) {
  fake.leaves[{2, 0}] = {0x80000001, 0, 0x0C0B0A09, 0};
  const uint32_t low[] = {9, 77, 0, 0};
  EXPECT_EQ(ownGetCacheSize(low), -1);
  const uint32_t next[] = {0x0A, 77, 0, 0};
  EXPECT_EQ(ownGetCacheSize(next), 77);
}

TEST_F(CacheSize, IsUnknownWithoutARegisterInUse) {
  fake.leaves[{2, 0}] = {0x80000001, 0x80000002, 0, 0xFFFFFFFF};
  const uint32_t table[] = {2, 77, 0xFF, 78, 0, 0};
  EXPECT_EQ(ownGetCacheSize(table), -1);
}

}  // namespace
}  // namespace vistrel::core::test
