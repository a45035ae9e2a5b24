// The probes, on a fake processor for each rule.
#include <gmock/gmock.h>

#include <cstring>
#include <vector>

#include "tests/cpu/fake_processor.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

using Probes = OnFakeProcessor;

struct BitProbe {
  int32_t (*probe)();
  uint32_t CpuidRegisters::*word;
  unsigned bit;
};
const BitProbe kBitProbes[] = {
    {ipp_has_rdtsc, &CpuidRegisters::edx, 4},
    {ipp_is_mmx_extension, &CpuidRegisters::edx, 23},
    {ipp_is_ssx_extension, &CpuidRegisters::edx, 25},
    {ipp_is_wni_extension, &CpuidRegisters::edx, 26},
    {ipp_is_pni_extension, &CpuidRegisters::ecx, 0},
    {ipp_is_mni_extension, &CpuidRegisters::ecx, 9},
    {ipp_is_sse41_extension, &CpuidRegisters::ecx, 19},
    {ipp_is_sse42_extension, &CpuidRegisters::ecx, 20},
    {ipp_is_movbe, &CpuidRegisters::ecx, 22},
};

TEST_F(Probes, ReadOneBitOfLeafOne) {
  for (const BitProbe& p : kBitProbes) {
    one() = {};
    one().*p.word = 1u << p.bit;
    EXPECT_EQ(p.probe(), 1) << p.bit;
    one() = {~0u, ~0u, ~0u, ~0u};
    one().*p.word = ~(1u << p.bit);
    EXPECT_EQ(p.probe(), 0) << p.bit;
  }
}

TEST_F(Probes, ReportTheHighestLeaf) {
  EXPECT_EQ(ipp_max_cpuid_input(), 0x16u);
  fake.leaves[{0, 0}].eax = 0x80000003;
  EXPECT_EQ(ipp_max_cpuid_input(), 0x80000003u);
}

TEST_F(Probes, ReportWhetherThereIsCpuid) {
  EXPECT_EQ(ipp_has_cpuid(), 1);
  fake.present = false;
  EXPECT_EQ(ipp_has_cpuid(), 0);
}

TEST_F(Probes, CountLogicalProcessorsOnlyWithTheirBit) {
  one() = {0, 2 << 16, 0, 1 << 28};
  EXPECT_EQ(ipp_is_htt_extension(), 1);
  one() = {0, 128 << 16, 0, 1 << 28};
  EXPECT_EQ(ipp_is_htt_extension(), 1);
  one() = {0, 0xFF01FFFF, 0, 1 << 28};
  EXPECT_EQ(ipp_is_htt_extension(), 0);
  one() = {0, 0, 0, 1 << 28};
  EXPECT_EQ(ipp_is_htt_extension(), 0);
  one() = {~0u, 128 << 16, ~0u, ~(1u << 28)};
  EXPECT_EQ(ipp_is_htt_extension(), 0);
}

TEST_F(Probes, ReadThe64BitFlagFromTheExtendedLeaf) {
  fake.leaves[{0x80000000, 0}].eax = 0x80000001;
  fake.leaves[{0x80000001, 0}].edx = 1 << 29;
  EXPECT_EQ(ipp_is_em64t_extension(), 1u);
  fake.leaves[{0x80000001, 0}].edx = ~(1u << 29);
  EXPECT_EQ(ipp_is_em64t_extension(), 0u);
}

// quirk: highest-leaf-as-flag
TEST_F(Probes, GiveTheHighestExtendedLeafWhereItIsTooLow) {
  fake.leaves[{0x80000001, 0}].edx = ~0u;
  for (uint32_t highest : {0x80000000u, 0x16u, 0u}) {
    fake.leaves[{0x80000000, 0}].eax = highest;
    EXPECT_EQ(ipp_is_em64t_extension(), highest);
  }
}

TEST_F(Probes, WantAvxFromProcessorAndSystem) {
  constexpr uint32_t kBoth = 1u << 27 | 1u << 28;
  for (uint32_t ecx : {kBoth, ~0u})
    for (uint32_t state = 0; state < 8; ++state) {
      one().ecx = ecx;
      fake.state = state;
      EXPECT_EQ(ipp_is_avx_extension(), state >= 6) << state;
    }
  EXPECT_EQ(fake.stateReads, 16);
}

TEST_F(Probes, ReadTheSystemsStateOnlyWhereTheInstructionIs) {
  fake.state = 7;
  for (uint32_t ecx : {0u, 1u << 27, 1u << 28, ~(1u << 27), ~(1u << 28)}) {
    one().ecx = ecx;
    EXPECT_EQ(ipp_is_avx_extension(), 0) << ecx;
  }
  EXPECT_EQ(fake.stateReads, 0);
}

TEST_F(Probes, CountTheCores) {
  fake.leaves[{4, 0}].eax = 7u << 26 | 0x3FFFFFF;
  EXPECT_EQ(ipp_get_cores_on_die(), 8);
  fake.leaves[{4, 0}].eax = ~0u;
  EXPECT_EQ(ipp_get_cores_on_die(), 64);
  fake.leaves[{4, 0}].eax = 0;
  EXPECT_EQ(ipp_get_cores_on_die(), 1);
}

TEST_F(Probes, CountOneCoreBelowLeafFour) {
  fake.leaves[{4, 0}].eax = ~0u;
  fake.leaves[{0, 0}].eax = 4;
  EXPECT_EQ(ipp_get_cores_on_die(), 64);
  fake.leaves[{0, 0}].eax = 3;
  EXPECT_EQ(ipp_get_cores_on_die(), 1);
}

TEST_F(Probes, KnowTheVendorByAllThreeWords) {
  EXPECT_EQ(ipp_is_GenuineIntel(), 1);
  fake.leaves[{0, 0}] = kOtherMaker;
  EXPECT_EQ(ipp_is_GenuineIntel(), 0);
  for (auto word : {&CpuidRegisters::ebx, &CpuidRegisters::ecx, &CpuidRegisters::edx}) {
    fake.leaves[{0, 0}] = kGenuineIntel;
    fake.leaves[{0, 0}].*word ^= 1;
    EXPECT_EQ(ipp_is_GenuineIntel(), 0);
  }
}

TEST_F(Probes, ReadTheWholeTimeStamp) {
  fake.time = 0x123456789ABCDEF0;
  EXPECT_EQ(ipp_get_pentium_counter(), 0x123456789ABCDEF0u);
}

TEST_F(Probes, RunAnyLeafInTheOrderOfTheRegisters) {
  fake.leaves[{7, 1}] = {11, 22, 33, 44};
  uint32_t registers[4];
  ownGetReg(registers, 7, 1);
  EXPECT_THAT(registers, ElementsAre(11, 22, 33, 44));
}

using Words = std::vector<int32_t>;

Words ident() {
  Words words(23);
  static_assert(sizeof(IppPentiumIdent) == 23 * sizeof(int32_t));
  IppPentiumIdent record;
  std::memset(&record, 0x55, sizeof record);
  ipp_get_pentium_ident(&record);
  std::memcpy(words.data(), &record, sizeof record);
  return words;
}

constexpr int32_t kUntouched = 0x55555555;

// quirk: type-at-bit-11. The type 2 here is the top bit of family 9 and a bit above it.
TEST_F(Probes, FillTheRecordInItsOrder) {
  one() = {0x0C3A1967, 0, 0, 0x12345678};  // extended 0xC3 and 0xA; family 9, model 6, stepping 7
  fake.leaves[{0, 0}].eax = 3;
  fake.leaves[{2, 0}] = {0x11223301, 0, 0, 0x44556677};
  fake.leaves[{0x80000000, 0}].eax = 0x80000008;
  const int32_t htt = 0, mmx = 0, sse = 1, sse2 = 0;  // of 0x12345678, with no processor counted
  EXPECT_EQ(ident(),
            (Words{9, 7, 6, 3, 0x12345678, 0x11223301, 0x44556677, mmx, kUntouched, sse, sse2, htt,
                   0, 0, 0, 1, 0,          0,          0xC3,       0xA, 0,          0,   0}));
}

TEST_F(Probes, FillEachFlagOfTheRecordByItsOwnBit) {
  fake.leaves[{0x80000000, 0}].eax = 0x80000001;
  struct Flag {
    size_t place;
    CpuidRegisters one;
  };
  const Flag flags[] = {
      {7, {0, 0, 0, 1 << 23}},        {9, {0, 0, 0, 1 << 25}},  {10, {0, 0, 0, 1 << 26}},
      {11, {0, 2 << 16, 0, 1 << 28}}, {12, {0, 0, 1, 0}},       {14, {0, 0, 1 << 9, 0}},
      {16, {0, 0, 1 << 19, 0}},       {17, {0, 0, 1 << 20, 0}}, {20, {0, 0, 1 << 22, 0}},
      {21, {0, 0, 1 << 28, 0}},       {22, {0, 0, 1 << 27, 0}},
  };
  for (const Flag& flag : flags) {
    one() = flag.one;
    Words expected(23, 0);
    expected[4] = static_cast<int32_t>(flag.one.edx);
    expected[8] = kUntouched;
    expected[15] = 1;
    expected[flag.place] = 1;
    EXPECT_EQ(ident(), expected) << flag.place;
  }
  one() = {};
  fake.leaves[{0x80000001, 0}].edx = 1 << 29;
  EXPECT_EQ(ident()[13], 1);
  fake.leaves[{4, 0}].eax = 5u << 26;
  EXPECT_EQ(ident()[15], 6);
}

}  // namespace
}  // namespace vistrel::core::test
