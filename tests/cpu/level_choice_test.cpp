// From features, vendor or code to the level that runs.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <vector>

#include "tests/cpu/fake_processor.h"

namespace vistrel::core {

void PrintTo(const LevelChoice& c, std::ostream* out) {
  *out << std::hex << "enabled " << c.enabled << std::dec << ", index " << c.index << ", lp "
       << c.lp << ", status " << c.status;
}

namespace test {
namespace {

using StaticInit = OnFakeProcessor;
using StaticInitCpu = OnFakeProcessor;

constexpr uint64_t kAll = ~uint64_t{0};

TEST(ChooseLevel, PrefersSse41) {
  EXPECT_EQ(chooseLevel(0x40), (LevelChoice{0x40, 3, 0, 0}));
  EXPECT_EQ(chooseLevel(0xDF), (LevelChoice{0xDF, 3, 0, 0}));
  EXPECT_EQ(chooseLevel(kAll), (LevelChoice{0xCDF, 3, 0, 0}));
  EXPECT_EQ(chooseLevel(kAll ^ 0x10), (LevelChoice{0xCCF, 3, 0, 0}));
}

TEST(ChooseLevel, DistinguishesSsse3WithMovbeFromSsse3) {
  EXPECT_EQ(chooseLevel(0x3F), (LevelChoice{0x1F, 2, 1, 0}));
  EXPECT_EQ(chooseLevel(0x1F), (LevelChoice{0x1F, 2, 0, 0}));
  EXPECT_EQ(chooseLevel(kAll ^ 0x40), (LevelChoice{0x1F, 2, 1, 0}));
  EXPECT_EQ(chooseLevel(kAll ^ 0x60), (LevelChoice{0x1F, 2, 0, 0}));
  EXPECT_EQ(chooseLevel(0x10), (LevelChoice{0x10, 2, 0, 0}));
}

TEST(ChooseLevel, NeverTakesIndexTwoForMovbeWithoutSsse3) {
  EXPECT_EQ(chooseLevel(0x2F, kBase64), (LevelChoice{0x0F, 1, 0, 0}));
  EXPECT_EQ(chooseLevel(0x27, kBase64), (LevelChoice{0x07, 0, 0, 36}));
  EXPECT_EQ(chooseLevel(0x20, kBase64), (LevelChoice{0x00, 0, 0, 36}));
  EXPECT_EQ(chooseLevel(kAll ^ 0x50, kBase64), (LevelChoice{0x0F, 1, 0, 0}));
}

TEST(ChooseLevel, HasSse3AsTheBaseOf64Bits) {
  EXPECT_EQ(chooseLevel(0x0F, kBase64), (LevelChoice{0x0F, 1, 0, 0}));
  EXPECT_EQ(chooseLevel(0x08, kBase64), (LevelChoice{0x08, 1, 0, 0}));
  EXPECT_EQ(chooseLevel(0x07, kBase64), (LevelChoice{0x07, 0, 0, 36}));
  EXPECT_EQ(chooseLevel(0, kBase64), (LevelChoice{0, 0, 0, 36}));
  EXPECT_EQ(chooseLevel(kAll ^ 0x58, kBase64), (LevelChoice{0x07, 0, 0, 36}));
}

TEST(ChooseLevel, HasSse2AsTheBaseOf32Bits) {
  EXPECT_EQ(chooseLevel(0x0F, kBase32), (LevelChoice{0x07, 1, 0, 0}));
  EXPECT_EQ(chooseLevel(0x07, kBase32), (LevelChoice{0x07, 1, 0, 0}));
  EXPECT_EQ(chooseLevel(0x0B, kBase32), (LevelChoice{0x03, 0, 0, 36}));
  EXPECT_EQ(chooseLevel(kAll ^ 0x54, kBase32), (LevelChoice{0x03, 0, 0, 36}));
}

TEST(ChooseLevel, TakesTheBaseOfThisBuild) {
  EXPECT_EQ(chooseLevel(0x07).status, sizeof(void*) == 8 ? 36 : 0);
}

LevelChoice inForce(int32_t status) {
  return {ippGetEnabledCpuFeatures(), ippJumpIndexForMergedLibs, ippJumpIndexForMergedLibsLP,
          status};
}

constexpr CpuidRegisters kUpToSse3 = {0, 0, 1, 1 << 23 | 1 << 25 | 1 << 26};
constexpr CpuidRegisters kUpToSsse3 = {0, 0, 1 | 1 << 9, kUpToSse3.edx};
constexpr CpuidRegisters kMovbe = {0, 0, kUpToSsse3.ecx | 1 << 22, kUpToSse3.edx};
constexpr CpuidRegisters kUpToSse41 = {0, 0, kUpToSsse3.ecx | 1 << 19, kUpToSse3.edx};

TEST(Words, StartOnTheBaseVariant) {
  EXPECT_EQ(ippJumpIndexForMergedLibs, 0u);
  EXPECT_EQ(ippJumpIndexForMergedLibsLP, 0u);
  EXPECT_EQ(ippGetEnabledCpuFeatures(), VISTREL_X86 ? 7u : 0u);
  EXPECT_EQ(ownFeatures, 0u);
  EXPECT_EQ(ownFeaturesAreValid, 0);
}

TEST_F(StaticInit, ChoosesByTheDetectedFeatures) {
  const std::pair<CpuidRegisters, LevelChoice> machines[] = {
      {kUpToSse41, {0x5F, 3, 0, 0}}, {kMovbe, {0x1F, 2, 1, 0}},
      {kUpToSsse3, {0x1F, 2, 0, 0}}, {kUpToSse3, {kBase.enabled, 1, 0, 0}},
      {{}, {0, 0, 0, 36}},
  };
  for (const auto& [registers, choice] : machines) {
    ownFeaturesAreValid = 0;
    one() = registers;
    EXPECT_EQ(inForce(ippStaticInit()), choice);
  }
}

TEST_F(StaticInit, ChoosesForAnotherVendorAndSaysSo) {
  fake.leaves[{0, 0}] = kOtherMaker;
  one() = kUpToSse41;
  EXPECT_EQ(inForce(ippStaticInit()), (LevelChoice{0x5F, 3, 0, 20}));
  ownFeaturesAreValid = 0;
  one() = kMovbe;
  EXPECT_EQ(inForce(ippStaticInit()), (LevelChoice{0x1F, 2, 1, 20}));
}

TEST_F(StaticInit, ReportsTheVendorBeforeTheLevel) {
  fake.leaves[{0, 0}] = kOtherMaker;
  EXPECT_EQ(inForce(ippStaticInit()), (LevelChoice{0, 0, 0, 20}));
}

TEST_F(StaticInit, TakesTheBaseVariantWithoutCpuid) {
  fake.present = false;
  ippStaticInitCpu(36);
  EXPECT_EQ(inForce(ippStaticInit()), (LevelChoice{kUndetected, 0, 0, 20}));
}

TEST_F(StaticInit, RepeatsItsChoiceFromTheCachedFeatures) {
  one() = kUpToSse41;
  EXPECT_EQ(ippStaticInit(), 0);
  one() = {};
  ippStaticInitCpu(36);
  EXPECT_EQ(inForce(ippStaticInit()), (LevelChoice{0x5F, 3, 0, 0}));
}

TEST_F(StaticInit, IsWhatInitDoes) {
  fake.leaves[{0, 0}] = kOtherMaker;
  one() = kMovbe;
  EXPECT_EQ(inForce(ippInit()), (LevelChoice{0x1F, 2, 1, 20}));
}

struct Code {
  uint32_t code;
  LevelChoice choice;
};
const std::vector<Code> kCodes = {
    {0, {0x0F, 1, 0, 0}},   {32, {0x0F, 1, 0, 0}}, {66, {0x0F, 1, 0, 0}}, {33, {0x1F, 2, 0, 0}},
    {34, {0x1F, 2, 0, 0}},  {67, {0x1F, 2, 0, 0}}, {36, {0x1F, 2, 1, 0}}, {35, {0x5F, 3, 0, 0}},
    {68, {0x5F, 3, 0, 0}},  {37, {0xDF, 3, 0, 0}}, {69, {0xDF, 3, 0, 0}}, {38, {0xCDF, 3, 0, 0}},
    {71, {0xCDF, 3, 0, 0}},
};
const std::vector<uint32_t> kCodesWithoutVariant = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 64, 65, 96};

const LevelChoice kMarked = {0xABCDEF, 1, 1, 0};

int32_t forcedFromMarked(uint32_t code, int32_t (*init)(uint32_t)) {
  ownSetFeatureMask(kMarked.enabled);
  ippJumpIndexForMergedLibs = kMarked.index;
  ippJumpIndexForMergedLibsLP = kMarked.lp;
  return init(code);
}

// On a processor without any feature.
TEST_F(StaticInitCpu, ForcesALevelWithoutAskingTheProcessor) {
  for (auto init : {ippStaticInitCpu, ippInitCpu})
    for (const Code& c : kCodes)
      EXPECT_EQ(inForce(forcedFromMarked(c.code, init)), c.choice) << c.code;
  EXPECT_TRUE(fake.leafReads.empty());
}

TEST_F(StaticInitCpu, RejectsEveryOtherCodeAndChangesNothing) {
  for (uint32_t code = 0; code < 300; ++code) {
    if (std::any_of(kCodes.begin(), kCodes.end(), [&](const Code& c) { return c.code == code; }))
      continue;
    const bool known = std::count(kCodesWithoutVariant.begin(), kCodesWithoutVariant.end(), code);
    LevelChoice expected = kMarked;
    expected.status = known ? 36 : 21;
    for (auto init : {ippStaticInitCpu, ippInitCpu})
      EXPECT_EQ(inForce(forcedFromMarked(code, init)), expected) << code;
  }
  EXPECT_EQ(ippStaticInitCpu(0xFFFFFFFE), 21);
  EXPECT_EQ(ippStaticInitCpu(0x80000000), 21);
}

TEST_F(StaticInitCpu, KnowsCodes71And96ButNot70And97) {
  EXPECT_EQ(ippStaticInitCpu(70), 21);
  EXPECT_EQ(ippStaticInitCpu(71), 0);
  EXPECT_EQ(ippStaticInitCpu(96), 36);
  EXPECT_EQ(ippStaticInitCpu(97), 21);
}

TEST_F(StaticInitCpu, DetectsByTheCodeOfAllOnes) {
  fake.leaves[{0, 0}] = kOtherMaker;
  one() = kUpToSsse3;
  for (auto init : {ippStaticInitCpu, ippInitCpu})
    EXPECT_EQ(inForce(forcedFromMarked(0xFFFFFFFF, init)), (LevelChoice{0x1F, 2, 0, 20}));
}

}  // namespace
}  // namespace test
}  // namespace vistrel::core
